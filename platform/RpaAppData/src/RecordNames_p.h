// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbFoundation/FreeNames.h>

#include <QVector>

#include <algorithm>

// Names that records are told apart by: compared exactly, never blank.
namespace RecordNames
{
// -1 when there is none.
template <class Record>
int IndexOf(const QVector<Record>& records, const QString& name)
{
    const auto found = std::find_if(records.begin(), records.end(),
                                    [&name](const Record& record) { return record.name == name; });
    return found == records.end() ? -1 : int(found - records.begin());
}

// Whether the record at the index, or a new one (-1), may have the name.
template <class Record>
bool IsFree(const QVector<Record>& records, const QString& name, int index)
{
    const int present = IndexOf(records, name);
    return !name.trimmed().isEmpty() && (present < 0 || present == index);
}

// Gives those with a blank or taken name the stem and a number that is free.
template <class Record>
void MakeUnique(QVector<Record>& records, const QString& stem)
{
    FreeNames names;
    for (Record& record : records)
        if (!names.Take(record.name))
            record.name = names.TakeNumbered(stem);
}

// The stem with the smallest number behind it that is free.
template <class Record>
QString MakeFree(const QVector<Record>& records, const QString& stem)
{
    FreeNames names;
    for (const Record& record : records)
        names.Take(record.name);
    return names.TakeNumbered(stem);
}
} // namespace RecordNames
