// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaEngineCore/IRpaLogManager.h>
#include <RpaRunHistory/RpaRunRecord.h>

#include <QSqlQuery>
#include <QStringList>

// The tables of the history, and their rows as values.
namespace RunRows
{
// What makes them.
QStringList Schema();
// The columns that From reads, in its order; the trace is read for one run only.
QString Columns();
RpaRunRecord From(const QSqlQuery& row);
RpaLogLine LineFrom(const QSqlQuery& row);
QString ToJson(const QVector<RpaRunValue>& values);
} // namespace RunRows
