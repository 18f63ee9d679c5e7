// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaRunHistory/RpaRunRecord.h>

#include <QVariantList>

// A filter of runs as a condition of SQL.
namespace RunFilterSql
{
// values: what the places of the condition stand for.
QString Where(const RpaRunFilter& filter, QVariantList* values);
} // namespace RunFilterSql
