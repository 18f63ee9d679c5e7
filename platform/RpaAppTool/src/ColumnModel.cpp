// SPDX-License-Identifier: Apache-2.0

#include "ColumnModel_p.h"

#include <WbBaseUI/WbIcons.h>

#include <QUndoStack>

namespace
{

constexpr int NameLength = 40;

// Columns take their cells along, so one act on them is kept as the whole table before and after it.
class ContentCommand : public QUndoCommand
{
public:
    ContentCommand(const QString& text, RpaTableData* changed, const RpaTableData::Content& contentBefore,
                   const RpaTableData::Content& contentAfter)
        : QUndoCommand(text), data(changed), before(contentBefore), after(contentAfter)
    {
    }

    void undo() override
    {
        if (data)
            data->SetContent(before);
    }
    void redo() override
    {
        // The first time the act has been done already.
        if (done && data)
            data->SetContent(after);
        done = true;
    }

private:
    const QPointer<RpaTableData> data;
    const RpaTableData::Content before;
    const RpaTableData::Content after;
    bool done = false;
};

QString TypeIcon(RpaColumnType type)
{
    switch (type) {
    case RpaColumnType::Number:
        return QStringLiteral("param-number");
    case RpaColumnType::Date:
        return QStringLiteral("param-date");
    case RpaColumnType::Switch:
        return QStringLiteral("param-bool");
    case RpaColumnType::Text:
        break;
    }
    return QStringLiteral("param-text");
}

} // namespace

ColumnModel::ColumnModel(QUndoStack& stack, QObject* parent)
    : RecordModel({QStringLiteral("列名"), QStringLiteral("类型")}, parent), undoStack(stack)
{
}

void ColumnModel::SetData(RpaTableData* given)
{
    if (tableData)
        tableData->disconnect(this);
    tableData = given;
    undoStack.clear();
    if (tableData) {
        connect(tableData, &RpaTableData::SigColumnChanged, this, &ColumnModel::Refresh);
        connect(tableData, &RpaTableData::SigColumnInserted, this, &ColumnModel::Refresh);
        connect(tableData, &RpaTableData::SigColumnRemoved, this, &ColumnModel::Refresh);
        connect(tableData, &RpaTableData::SigReset, this, &ColumnModel::Refresh);
        connect(tableData, &QObject::destroyed, this, &ColumnModel::Refresh);
    }
    Refresh();
}

void ColumnModel::Refresh()
{
    Show(columns, tableData ? tableData->GetColumns() : QVector<RpaTableColumn>());
}

int ColumnModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : columns.size();
}

QVariant ColumnModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= columns.size())
        return {};
    const RpaTableColumn& column = columns.at(index.row());
    if (index.column() == NameColumn)
        return role == Qt::DisplayRole || role == Qt::EditRole ? QVariant(column.name) : QVariant();
    if (role == Qt::DecorationRole)
        return WbIcons::Get(TypeIcon(column.type));
    if (role == Qt::EditRole)
        return static_cast<int>(column.type);
    return role == Qt::DisplayRole ? QVariant(RpaTableColumn::GetTypeTitle(column.type)) : QVariant();
}

QVector<RecordModel::Choice> ColumnModel::GetChoices(const QModelIndex& index) const
{
    QVector<Choice> choices;
    if (index.column() == TypeColumn) {
        const QVector<RpaColumnType> types = RpaTableColumn::GetTypes();
        for (const RpaColumnType type : types)
            choices << Choice{RpaTableColumn::GetTypeTitle(type), static_cast<int>(type), TypeIcon(type)};
    }
    return choices;
}

bool ColumnModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (role != Qt::EditRole || !index.isValid() || index.row() >= columns.size() || !tableData)
        return false;
    RpaTableColumn column = columns.at(index.row());
    if (index.column() == TypeColumn) {
        column.type = static_cast<RpaColumnType>(value.toInt());
    } else {
        column.name = value.toString().trimmed();
        const int other = tableData->IndexOfColumn(column.name);
        if (column.name.isEmpty() || column.name.size() > NameLength) {
            emit SigRefused(QStringLiteral("列名为 1 到 %1 个字符").arg(NameLength));
            return false;
        }
        if (other >= 0 && other != index.row()) {
            emit SigRefused(QStringLiteral("列名“%1”已存在").arg(column.name));
            return false;
        }
    }
    const int row = index.row();
    return Change(QStringLiteral("修改列"),
                  [row, column](RpaTableData& data) { return data.SetColumn(row, column); });
}

bool ColumnModel::AddRecord()
{
    return Change(QStringLiteral("添加列"), [](RpaTableData& data) {
        RpaTableColumn column;
        column.name = data.MakeFreeColumnName(QStringLiteral("列"));
        return data.InsertColumn(-1, column) >= 0;
    });
}

bool ColumnModel::RemoveRecords(const QVector<int>& rows)
{
    return Change(QStringLiteral("删除列"), [&rows](RpaTableData& data) {
        for (int i = rows.size() - 1; i >= 0; --i)
            data.RemoveColumn(rows.at(i));
        return !rows.isEmpty();
    });
}

bool ColumnModel::MoveRecord(int from, int to)
{
    return Change(QStringLiteral("移动列"),
                  [from, to](RpaTableData& data) { return data.MoveColumn(from, to); });
}

bool ColumnModel::Change(const QString& text, const std::function<bool(RpaTableData&)>& act)
{
    if (!tableData)
        return false;
    const RpaTableData::Content before = tableData->GetContent();
    if (!act(*tableData))
        return false;
    undoStack.push(new ContentCommand(text, tableData, before, tableData->GetContent()));
    return true;
}
