// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "RecordModel_p.h"

#include <RpaAppData/RpaTableData.h>

#include <QPointer>

#include <functional>

class QUndoStack;

// The columns of a page's table for their editor panel.
class ColumnModel : public RecordModel
{
    Q_OBJECT

public:
    enum Column
    {
        NameColumn,
        TypeColumn,
    };

    ColumnModel(QUndoStack& undoStack, QObject* parent);

    void SetData(RpaTableData* tableData);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    QVector<Choice> GetChoices(const QModelIndex& index) const override;
    bool AddRecord() override;
    bool RemoveRecords(const QVector<int>& rows) override;
    bool MoveRecord(int from, int to) override;

private:
    void Refresh();
    bool Change(const QString& text, const std::function<bool(RpaTableData&)>& act);

    QUndoStack& undoStack;
    QPointer<RpaTableData> tableData;
    QVector<RpaTableColumn> columns;
};
