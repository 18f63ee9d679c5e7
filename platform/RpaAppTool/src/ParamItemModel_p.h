// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "RecordModel_p.h"

#include <RpaAppData/RpaParamData.h>

#include <QPointer>

class QUndoStack;

// The parameters of a page for their editor panel.
class ParamItemModel : public RecordModel
{
    Q_OBJECT

public:
    enum Column
    {
        NameColumn,
        LabelColumn,
        TypeColumn,
        DefaultColumn,
        RequiredColumn,
        LimitsColumn,
    };

    ParamItemModel(QUndoStack& undoStack, QObject* parent);

    void SetData(RpaParamData* paramData);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVector<Choice> GetChoices(const QModelIndex& index) const override;
    bool TakesOtherText(const QModelIndex& index) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    bool IsNarrow(int column) const override { return column == TypeColumn || column == RequiredColumn; }
    int GetLeastWidth(int column) const override
    {
        return column == TypeColumn ? 106 : RecordModel::GetLeastWidth(column);
    }
    int GetTightWidth(int column) const override
    {
        constexpr int widths[] = {76, 76, 46, 62, 46, 46};
        return widths[column];
    }
    bool AddRecord() override;
    bool RemoveRecords(const QVector<int>& rows) override;
    bool MoveRecord(int from, int to) override;

private:
    void Refresh();
    QString GetText(const RpaParamItem& item, int column) const;
    QString Write(RpaParamItem& item, int row, int column, const QVariant& value) const;
    bool IsTaken(const QString& name, int exceptRow) const;
    bool Change(const QString& text, const QVector<RpaParamItem>& after);

    QUndoStack& undoStack;
    QPointer<RpaParamData> paramData;
    QVector<RpaParamItem> items;
};
