// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaProcessData/RpaProcessDataExport.h>

#include <QStringList>

class RpaStatementNode;

// The variables of one statement, whether it is enabled or not; none when its command is unknown. Any thread
// that may read the statement.
namespace RpaStatementNames
{
// Those that it reads or changes, each once, in the order of its arguments.
RPAPROCESSDATA_EXPORT QStringList GetRead(const RpaStatementNode& node);

// Those that it gives a value: its output first.
RPAPROCESSDATA_EXPORT QStringList GetSet(const RpaStatementNode& node);
} // namespace RpaStatementNames
