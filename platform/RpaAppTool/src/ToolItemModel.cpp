// SPDX-License-Identifier: Apache-2.0

#include "ListCommand_p.h"
#include "ToolItemModel_p.h"

#include <RpaProcessData/ProcessDataManager.h>
#include <WbBaseUI/WbIcons.h>

namespace
{

constexpr int TextLength = 20;

} // namespace

ToolItemModel::ToolItemModel(QUndoStack& stack, QObject* parent)
    : RecordModel({QStringLiteral("文字"), QStringLiteral("图标"), QStringLiteral("流程")}, parent),
      undoStack(stack)
{
}

void ToolItemModel::SetAppData(const RpaAppDataPtr& app)
{
    appData = app;
}

void ToolItemModel::SetData(RpaToolData* given)
{
    if (toolData)
        toolData->disconnect(this);
    toolData = given;
    undoStack.clear();
    if (toolData) {
        connect(toolData, &RpaToolData::SigChanged, this, &ToolItemModel::Refresh);
        connect(toolData, &QObject::destroyed, this, &ToolItemModel::Refresh);
    }
    Refresh();
}

void ToolItemModel::Refresh()
{
    Show(items, toolData ? toolData->GetItems() : QVector<RpaToolItem>());
}

int ToolItemModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : items.size();
}

QVector<RecordModel::Choice> ToolItemModel::GetIcons()
{
    const auto icon = [](const QString& title, const QString& name) { return Choice{title, name, name}; };
    return {icon(QStringLiteral("运行"), QStringLiteral("run")),
            icon(QStringLiteral("表格"), QStringLiteral("table")),
            icon(QStringLiteral("文件"), QStringLiteral("file")),
            icon(QStringLiteral("网页"), QStringLiteral("web")),
            icon(QStringLiteral("下载"), QStringLiteral("download")),
            icon(QStringLiteral("上传"), QStringLiteral("upload")),
            icon(QStringLiteral("搜索"), QStringLiteral("search")),
            icon(QStringLiteral("刷新"), QStringLiteral("refresh")),
            icon(QStringLiteral("消息"), QStringLiteral("message")),
            icon(QStringLiteral("时间"), QStringLiteral("clock"))};
}

QVariant ToolItemModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= items.size())
        return {};
    const RpaToolItem& item = items.at(index.row());
    const QString iconName = item.icon.isEmpty() ? QStringLiteral("run") : item.icon;
    switch (index.column()) {
    case TextColumn:
        return role == Qt::DisplayRole || role == Qt::EditRole ? QVariant(item.text) : QVariant();
    case IconColumn:
        if (role == Qt::DecorationRole)
            return WbIcons::Get(iconName);
        return role == Qt::EditRole || role == Qt::AccessibleTextRole ? QVariant(iconName) : QVariant();
    default:
        if (role == Qt::DisplayRole && item.processName.isEmpty())
            return QStringLiteral("（未选择）");
        return role == Qt::DisplayRole || role == Qt::EditRole ? QVariant(item.processName) : QVariant();
    }
}

QVector<RecordModel::Choice> ToolItemModel::GetChoices(const QModelIndex& index) const
{
    if (index.column() == IconColumn)
        return GetIcons();
    if (index.column() != ProcessColumn || !appData)
        return {};
    QVector<Choice> choices;
    const QStringList names = appData->GetProcessDataManager()->GetProcessNames();
    for (const QString& name : names)
        choices << Choice{name, name, {}};
    return choices;
}

bool ToolItemModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (role != Qt::EditRole || !index.isValid() || index.row() >= items.size())
        return false;
    QVector<RpaToolItem> after = items;
    RpaToolItem& item = after[index.row()];
    const QString text = value.toString().trimmed();
    switch (index.column()) {
    case TextColumn:
        if (text.isEmpty() || text.size() > TextLength) {
            emit SigRefused(text.isEmpty() ? QStringLiteral("工具文字不能为空")
                                           : QStringLiteral("工具文字不超过%1个字符").arg(TextLength));
            return false;
        }
        item.text = text;
        break;
    case IconColumn:
        item.icon = text;
        break;
    default:
        item.processName = value.toString();
        break;
    }
    return after != items && Change(QStringLiteral("修改工具"), after);
}

bool ToolItemModel::AddRecord()
{
    if (!toolData)
        return false;
    QVector<RpaToolItem> after = items;
    RpaToolItem item;
    item.text = QStringLiteral("工具%1").arg(items.size() + 1);
    if (appData)
        item.processName = appData->GetProcessDataManager()->GetProcessNameFirst();
    after << item;
    return Change(QStringLiteral("添加工具"), after);
}

bool ToolItemModel::RemoveRecords(const QVector<int>& rows)
{
    return Change(QStringLiteral("删除工具"), ListActs::Without(items, rows));
}

bool ToolItemModel::MoveRecord(int from, int to)
{
    return Change(QStringLiteral("移动工具"), ListActs::Moved(items, from, to));
}

bool ToolItemModel::Change(const QString& text, const QVector<RpaToolItem>& after)
{
    if (!toolData)
        return false;
    undoStack.push(new ListCommand<RpaToolData, RpaToolItem>(text, toolData, items, after));
    return true;
}
