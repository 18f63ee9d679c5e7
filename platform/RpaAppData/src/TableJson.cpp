// SPDX-License-Identifier: Apache-2.0

#include "RecordJson_p.h"
#include "TableJson_p.h"

namespace
{
const RecordJson::Fields<RpaTableColumn>& ColumnFields()
{
    static const RecordJson::Fields<RpaTableColumn> fields{
        RecordJson::Always("name", &RpaTableColumn::name),
        RecordJson::TypeName<RpaTableColumn>("type"),
        RecordJson::WhenSet("width", &RpaTableColumn::width),
    };
    return fields;
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

QVariant ReadCell(JsonReader& reader)
{
    // The two kinds that tables are full of, past the general way.
    if (reader.GetType() == JsonReader::Type::String) {
        QString text;
        reader.ReadString(text);
        return text;
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
    RecordJson::WriteList(writer, columns, ColumnFields());
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
            RecordJson::ReadList(reader, table.columns, ColumnFields());
        else if (reader.IsKey("rows"))
            table.rows = ReadRows(reader);
        else
            reader.KeepMember(unknown);
    return table;
}
