// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaAppData/RpaTableData.h>

class JsonReader;
class JsonWriter;

// Columns and cells to and from JSON. A row is an array of as many cells as there are columns.
namespace TableJson
{
struct Table
{
    QVector<RpaTableColumn> columns;
    QVector<QVector<QVariant>> rows; // of any length, cells of any type
};

void Write(JsonWriter& writer, const QVector<RpaTableColumn>& columns,
           const QVector<QVector<QVariant>>& rows);
Table Read(JsonReader& reader, QByteArray& unknown);
} // namespace TableJson
