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
QVector<RpaRunValue> ValuesOf(const QByteArray& json);

// A number that this version does not know counts as the last one it knows.
template <typename Enum>
Enum EnumOf(int value, Enum last)
{
    return value >= 0 && value < int(last) ? Enum(value) : last;
}
} // namespace RunRows
