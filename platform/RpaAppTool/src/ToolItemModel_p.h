// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "RecordModel_p.h"

#include <RpaAppData/RpaAppData.h>
#include <RpaAppData/RpaToolData.h>

#include <QPointer>

class QUndoStack;

// The tools of a page for their editor panel.
class ToolItemModel : public RecordModel
{
    Q_OBJECT

public:
    enum Column
    {
        TextColumn,
        IconColumn,
        ProcessColumn,
    };

    ToolItemModel(QUndoStack& undoStack, QObject* parent);

    void SetAppData(const RpaAppDataPtr& app);
    void SetData(RpaToolData* toolData);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    QVector<Choice> GetChoices(const QModelIndex& index) const override;
    bool IsNarrow(int column) const override { return column == IconColumn; }
    bool AddRecord() override;
    bool RemoveRecords(const QVector<int>& rows) override;
    bool MoveRecord(int from, int to) override;

    // Pictures that a tool may have, with what the author reads.
    static QVector<Choice> GetIcons();

private:
    void Refresh();
    bool Change(const QString& text, const QVector<RpaToolItem>& after);

    QUndoStack& undoStack;
    RpaAppDataPtr appData;
    QPointer<RpaToolData> toolData;
    QVector<RpaToolItem> items;
};
