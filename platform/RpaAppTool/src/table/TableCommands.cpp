// SPDX-License-Identifier: Apache-2.0

#include "TableCommands_p.h"

CellsCommand::CellsCommand(const QString& text, RpaTableData* changed, const QVector<CellChange>& cellChanges,
                           int added)
    : QUndoCommand(text), data(changed), changes(cellChanges), addedRows(added)
{
}

void CellsCommand::redo()
{
    if (!data)
        return;
    if (addedRows > 0)
        data->InsertRows(-1, QVector<QVariantList>(addedRows));
    Put(&CellChange::after);
}

void CellsCommand::undo()
{
    if (!data)
        return;
    Put(&CellChange::before);
    if (addedRows > 0)
        data->RemoveRows(data->GetRowCount() - addedRows, addedRows);
}

void CellsCommand::Put(QVariant CellChange::*value)
{
    QVector<RpaTableData::Cell> cells;
    cells.reserve(changes.size());
    for (const CellChange& change : changes)
        cells.append({change.row, change.column, change.*value});
    data->SetCells(cells);
}

RowsCommand::RowsCommand(const QString& text, RpaTableData* changed, const QVector<Row>& changedRows,
                         bool inserts)
    : QUndoCommand(text), data(changed), rows(changedRows), insert(inserts)
{
}

void RowsCommand::redo()
{
    insert ? Insert() : Remove();
}

void RowsCommand::undo()
{
    insert ? Remove() : Insert();
}

// Neighbouring rows go together: one by one, a table of many rows would be moved in memory as often.
void RowsCommand::Insert()
{
    for (int i = 0; data && i < rows.size();) {
        QVector<QVariantList> run;
        const int first = rows.at(i).index;
        for (; i < rows.size() && rows.at(i).index == first + run.size(); ++i)
            run << rows.at(i).cells;
        data->InsertRows(first, run);
    }
}

void RowsCommand::Remove()
{
    for (int i = rows.size() - 1; data && i >= 0;) {
        const int last = rows.at(i).index;
        int count = 0;
        for (; i >= 0 && rows.at(i).index == last - count; --i)
            ++count;
        data->RemoveRows(last - count + 1, count);
    }
}
