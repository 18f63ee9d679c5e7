// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaAppData/RpaTableData.h>

#include <QPointer>
#include <QUndoCommand>
#include <QVector>

// One cell before and after an act.
struct CellChange
{
    int row;
    int column;
    QVariant before;
    QVariant after;
};

// Changes cells, after adding empty rows at the end where they are needed.
class CellsCommand : public QUndoCommand
{
public:
    CellsCommand(const QString& text, RpaTableData* data, const QVector<CellChange>& changes, int addedRows);

    void undo() override;
    void redo() override;

private:
    void Put(QVariant CellChange::*value);

    const QPointer<RpaTableData> data;
    const QVector<CellChange> changes;
    const int addedRows;
};

// Inserts or removes whole rows.
class RowsCommand : public QUndoCommand
{
public:
    struct Row
    {
        int index;
        QVariantList cells;
    };

    // rows: in ascending order of their indexes.
    RowsCommand(const QString& text, RpaTableData* data, const QVector<Row>& rows, bool insert);

    void undo() override;
    void redo() override;

private:
    void Insert();
    void Remove();

    const QPointer<RpaTableData> data;
    const QVector<Row> rows;
    const bool insert;
};
