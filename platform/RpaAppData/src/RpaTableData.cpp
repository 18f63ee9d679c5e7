// SPDX-License-Identifier: Apache-2.0

#include "RecordNames_p.h"
#include "TableJson_p.h"
#include "TypedValue_p.h"

#include <RpaAppData/RpaTableData.h>
#include <WbFoundation/JsonReader.h>
#include <WbFoundation/JsonWriter.h>

#include <QRect>

#include <algorithm>

namespace
{
template <class List>
bool Has(const List& list, int index)
{
    return index >= 0 && index < list.size();
}

// Where an insertion happens: -1 and what lies beyond the end mean the end.
template <class List>
int PlaceIn(const List& list, int index)
{
    return index < 0 || index > list.size() ? list.size() : index;
}

// As many cells as columns, each of its column's type. False when a cell does not fit or there are too many.
bool FitRow(const QVector<RpaTableColumn>& columns, QVector<QVariant>& row)
{
    if (row.size() > columns.size())
        return false;
    for (int i = 0; i < row.size(); ++i)
        if (!columns.at(i).Fit(row[i]))
            return false;
    row.resize(columns.size());
    return true;
}

// Whatever comes from a file is made to fit; what cannot be becomes empty.
void ForceRow(const QVector<RpaTableColumn>& columns, QVector<QVariant>& row)
{
    row.resize(columns.size());
    for (int i = 0; i < row.size(); ++i)
        if (!columns.at(i).Fit(row[i]))
            row[i] = QVariant();
}
} // namespace

RpaTableData::RpaTableData(QObject* parent) : QObject(parent) {}

QStringList RpaTableData::GetColumnNames() const
{
    QStringList names;
    for (const RpaTableColumn& column : columns)
        names.append(column.name);
    return names;
}

QString RpaTableData::MakeFreeColumnName(const QString& stem) const
{
    return RecordNames::MakeFree(columns, stem);
}

int RpaTableData::InsertColumn(int index, const RpaTableColumn& column)
{
    if (!RecordNames::IsFree(columns, column.name, -1))
        return -1;
    const int place = PlaceIn(columns, index);
    emit SigAboutToInsertColumn(place);
    columns.insert(place, column);
    ForEachRow([place](QVector<QVariant>& row) { row.insert(place, QVariant()); });
    emit SigColumnInserted(place);
    emit SigChanged();
    return place;
}

bool RpaTableData::SetColumn(int index, const RpaTableColumn& column)
{
    if (!Has(columns, index) || !RecordNames::IsFree(columns, column.name, index) ||
        column == columns.at(index))
        return false;

    const bool newType = column.type != columns.at(index).type;
    columns[index] = column;
    if (newType) {
        ForEachRow([&column, index](QVector<QVariant>& row) {
            if (!column.Fit(row[index]))
                row[index] = QVariant();
        });
    }
    emit SigColumnChanged(index);
    if (newType && !rows.isEmpty())
        emit SigCellsChanged(0, index, rows.size() - 1, index);
    emit SigChanged();
    return true;
}

bool RpaTableData::RemoveColumn(int index)
{
    if (!Has(columns, index))
        return false;
    emit SigAboutToRemoveColumn(index);
    columns.removeAt(index);
    ForEachRow([index](QVector<QVariant>& row) { row.removeAt(index); });
    emit SigColumnRemoved(index);
    emit SigChanged();
    return true;
}

bool RpaTableData::MoveColumn(int from, int to)
{
    if (!Has(columns, from) || !Has(columns, to) || from == to)
        return false;
    emit SigAboutToReset();
    columns.move(from, to);
    ForEachRow([from, to](QVector<QVariant>& row) { row.move(from, to); });
    emit SigReset();
    emit SigChanged();
    return true;
}

QVariant RpaTableData::GetCell(int row, int column) const
{
    return Has(rows, row) && Has(columns, column) ? rows.at(row).at(column) : QVariant();
}

bool RpaTableData::PutCell(const Cell& cell, bool& changed)
{
    QVariant fitting = cell.value;
    if (!Has(rows, cell.row) || !Has(columns, cell.column) || !columns.at(cell.column).Fit(fitting))
        return false;
    QVariant& present = rows[cell.row][cell.column];
    changed = !TypedValue::IsSame(present, fitting);
    if (changed)
        present = fitting;
    return true;
}

bool RpaTableData::SetCell(int row, int column, const QVariant& value)
{
    return SetCells({{row, column, value}});
}

bool RpaTableData::SetCells(const QVector<Cell>& cells)
{
    bool fits = true;
    QRect area;
    for (const Cell& cell : cells) {
        bool changed = false;
        fits = PutCell(cell, changed) && fits;
        if (changed)
            area |= QRect(cell.column, cell.row, 1, 1);
    }
    if (area.isEmpty())
        return fits;
    emit SigCellsChanged(area.top(), area.left(), area.bottom(), area.right());
    emit SigChanged();
    return fits;
}

int RpaTableData::InsertRows(int row, const QVector<QVariantList>& newRows)
{
    QVector<QVector<QVariant>> fitting;
    fitting.reserve(newRows.size());
    for (const QVariantList& cells : newRows) {
        fitting.append(cells.toVector());
        if (!FitRow(columns, fitting.last()))
            return -1;
    }
    if (fitting.isEmpty())
        return -1;

    const int first = PlaceIn(rows, row);
    emit SigAboutToInsertRows(first, first + fitting.size() - 1);
    // One shift of the rows behind, however many are inserted.
    rows.insert(first, fitting.size(), QVector<QVariant>());
    std::move(fitting.begin(), fitting.end(), rows.begin() + first);
    emit SigRowsInserted(first, first + fitting.size() - 1);
    emit SigChanged();
    return first;
}

bool RpaTableData::RemoveRows(int row, int count)
{
    if (row < 0 || count <= 0 || count > rows.size() - row)
        return false;
    emit SigAboutToRemoveRows(row, row + count - 1);
    rows.remove(row, count);
    emit SigRowsRemoved(row, row + count - 1);
    emit SigChanged();
    return true;
}

void RpaTableData::ClearRows()
{
    RemoveRows(0, rows.size());
}

void RpaTableData::WriteJson(JsonWriter& writer) const
{
    writer.BeginObject();
    TableJson::Write(writer, columns, hasResults ? initialRows : rows);
    writer.RawMembers(unknown);
    writer.EndObject();
}

std::function<void()> RpaTableData::ReadJson(JsonReader& reader)
{
    QByteArray foreign;
    if (!reader.EnterObject())
        return {};
    TableJson::Table table = TableJson::Read(reader, foreign);
    for (QVector<QVariant>& row : table.rows)
        ForceRow(table.columns, row);

    RecordNames::MakeUnique(table.columns, QStringLiteral("列"));
    return [this, table, foreign] {
        unknown = foreign;
        SetContent({table.columns, table.rows});
    };
}
