// SPDX-License-Identifier: Apache-2.0

#include "TableJson_p.h"
#include "TypedValue_p.h"

#include <WbFoundation/JsonReader.h>
#include <WbFoundation/JsonWriter.h>

namespace
{
void WriteColumn(JsonWriter& writer, const RpaTableColumn& column)
{
    const bool foreign = column.type == RpaColumnType::Text && !column.foreignType.isEmpty();
    writer.BeginObject();
    writer.Member("name", column.name);
    writer.Member("type", foreign ? column.foreignType : RpaTableColumn::GetTypeName(column.type));
    if (column.width > 0)
        writer.Member("width", column.width);
    writer.RawMembers(column.unknown);
    writer.EndObject();
}

void WriteCell(JsonWriter& writer, const QVariant& cell)
{
    switch (static_cast<QMetaType::Type>(cell.userType())) {
    case QMetaType::QString:
        writer.String(cell.toString());
        break;
    case QMetaType::Double:
        writer.Double(cell.toDouble());
        break;
    default:
        writer.Variant(TypedValue::ToJsonValue(cell));
    }
}

void ReadType(JsonReader& reader, RpaTableColumn& column)
{
    QString name;
    reader.ReadString(name);
    const QVector<RpaColumnType> types = RpaTableColumn::GetTypes();
    for (RpaColumnType type : types) {
        if (RpaTableColumn::GetTypeName(type) == name) {
            column.type = type;
            return;
        }
    }
    column.foreignType = name;
}

RpaTableColumn ReadColumn(JsonReader& reader)
{
    RpaTableColumn column;
    while (reader.NextMember())
        if (reader.IsKey("name"))
            reader.ReadString(column.name);
        else if (reader.IsKey("type"))
            ReadType(reader, column);
        else if (reader.IsKey("width"))
            reader.ReadInt(column.width);
        else
            reader.KeepMember(column.unknown);
    return column;
}

QVector<RpaTableColumn> ReadColumns(JsonReader& reader)
{
    QVector<RpaTableColumn> columns;
    if (!reader.EnterArray())
        return columns;
    while (reader.NextElement())
        if (reader.EnterObject())
            columns.append(ReadColumn(reader));
    return columns;
}

QVariant ReadCell(JsonReader& reader)
{
    // The two kinds that tables are full of, past the general way.
    if (reader.GetType() == JsonReader::Type::String) {
        QString text;
        reader.ReadString(text);
        return QVariant(std::move(text));
    }
    if (reader.GetType() == JsonReader::Type::Number) {
        double number = 0;
        reader.ReadDouble(number);
        return number;
    }
    QVariant cell;
    reader.ReadVariant(cell);
    return cell;
}

QVector<QVector<QVariant>> ReadRows(JsonReader& reader)
{
    QVector<QVector<QVariant>> rows;
    if (!reader.EnterArray())
        return rows;
    while (reader.NextElement()) {
        if (!reader.EnterArray())
            continue;
        QVector<QVariant> row;
        // Rows of one table are of one length.
        if (!rows.isEmpty())
            row.reserve(rows.last().size());
        while (reader.NextElement())
            row.append(ReadCell(reader));
        rows.append(row);
    }
    return rows;
}
} // namespace

void TableJson::Write(JsonWriter& writer, const QVector<RpaTableColumn>& columns,
                      const QVector<QVector<QVariant>>& rows)
{
    writer.Key("columns");
    writer.BeginArray();
    for (const RpaTableColumn& column : columns)
        WriteColumn(writer, column);
    writer.EndArray();
    writer.Key("rows");
    writer.BeginArray();
    for (const QVector<QVariant>& row : rows) {
        writer.BeginArray();
        for (const QVariant& cell : row)
            WriteCell(writer, cell);
        writer.EndArray();
    }
    writer.EndArray();
}

TableJson::Table TableJson::Read(JsonReader& reader, QByteArray& unknown)
{
    Table table;
    while (reader.NextMember())
        if (reader.IsKey("columns"))
            table.columns = ReadColumns(reader);
        else if (reader.IsKey("rows"))
            table.rows = ReadRows(reader);
        else
            reader.KeepMember(unknown);
    return table;
}
