// SPDX-License-Identifier: Apache-2.0

#include "ListCommand_p.h"
#include "ParamItemModel_p.h"
#include "ParamLimits_p.h"

#include <RpaAppData/RpaTextPattern.h>
#include <WbBaseUI/WbIcons.h>

#include <QMap>

namespace
{

constexpr int NameLength = 40;

QString TypeIcon(RpaParamType type)
{
    static const QMap<RpaParamType, QString> icons{
        {RpaParamType::Number, QStringLiteral("param-number")},
        {RpaParamType::Slider, QStringLiteral("param-number")},
        {RpaParamType::Date, QStringLiteral("param-date")},
        {RpaParamType::DateTime, QStringLiteral("clock")},
        {RpaParamType::Choice, QStringLiteral("param-choice")},
        {RpaParamType::Choices, QStringLiteral("param-list")},
        {RpaParamType::Switch, QStringLiteral("param-bool")},
        {RpaParamType::File, QStringLiteral("param-file")},
        {RpaParamType::Files, QStringLiteral("param-file")},
        {RpaParamType::Folder, QStringLiteral("open")},
        {RpaParamType::Password, QStringLiteral("param-password")},
        {RpaParamType::Lines, QStringLiteral("note")},
        {RpaParamType::Progress, QStringLiteral("wait")},
        {RpaParamType::Picture, QStringLiteral("image")},
        {RpaParamType::Group, QStringLiteral("heading")},
    };
    return icons.value(type, QStringLiteral("param-text"));
}

bool HasDefault(const RpaParamItem& item)
{
    return item.type != RpaParamType::Password && item.type != RpaParamType::Group && !item.IsOutput();
}

} // namespace

ParamItemModel::ParamItemModel(QUndoStack& stack, QObject* parent)
    : RecordModel({QStringLiteral("名称"), QStringLiteral("标签"), QStringLiteral("类型"),
                   QStringLiteral("默认值"), QStringLiteral("必填"), QStringLiteral("限制")},
                  parent),
      undoStack(stack)
{
}

void ParamItemModel::SetData(RpaParamData* given)
{
    if (paramData)
        paramData->disconnect(this);
    paramData = given;
    undoStack.clear();
    if (paramData) {
        connect(paramData, &RpaParamData::SigChanged, this, &ParamItemModel::Refresh);
        connect(paramData, &RpaParamData::SigResultsChanged, this, &ParamItemModel::Refresh);
        connect(paramData, &QObject::destroyed, this, &ParamItemModel::Refresh);
    }
    Refresh();
}

void ParamItemModel::Refresh()
{
    Show(items, paramData ? paramData->GetItems() : QVector<RpaParamItem>());
}

int ParamItemModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : items.size();
}

QString ParamItemModel::GetText(const RpaParamItem& item, int column) const
{
    switch (column) {
    case NameColumn:
        return item.name;
    case LabelColumn:
        return item.label;
    case TypeColumn:
        return RpaParamItem::GetTypeTitle(item.type);
    case DefaultColumn:
        if (!HasDefault(item))
            return {};
        if (item.type == RpaParamType::Switch)
            return item.defaultValue.toBool() ? QStringLiteral("开") : QStringLiteral("关");
        return RpaParamItem::GetText(item.defaultValue);
    case LimitsColumn:
        return ParamLimits::TextOf(item);
    default:
        return {};
    }
}

QVariant ParamItemModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= items.size())
        return {};
    const RpaParamItem& item = items.at(index.row());
    const int column = index.column();
    if (column == RequiredColumn && !item.CanBeMissing() && !item.required)
        return {};
    if (column == RequiredColumn)
        return role == Qt::CheckStateRole ? QVariant(item.required ? Qt::Checked : Qt::Unchecked)
                                          : QVariant();
    if (column == TypeColumn && role == Qt::DecorationRole)
        return WbIcons::Get(TypeIcon(item.type));
    if (column == TypeColumn && role == Qt::EditRole)
        return static_cast<int>(item.type);
    if (column == DefaultColumn && role == Qt::EditRole && item.type == RpaParamType::Switch)
        return item.defaultValue.toBool();
    return role == Qt::DisplayRole || role == Qt::EditRole ? QVariant(GetText(item, column)) : QVariant();
}

Qt::ItemFlags ParamItemModel::flags(const QModelIndex& index) const
{
    Qt::ItemFlags flags = RecordModel::flags(index);
    if (!index.isValid() || index.row() >= items.size())
        return flags;
    const RpaParamItem& item = items.at(index.row());
    if (index.column() == RequiredColumn)
        return (item.CanBeMissing() || item.required ? flags | Qt::ItemIsUserCheckable
                                                     : flags & ~Qt::ItemIsEnabled) &
               ~Qt::ItemIsEditable;
    const bool without = (index.column() == LimitsColumn && !ParamLimits::Has(item)) ||
                         (index.column() == DefaultColumn && !HasDefault(item));
    return without ? flags & ~(Qt::ItemIsEditable | Qt::ItemIsEnabled) : flags;
}

QVector<RecordModel::Choice> ParamItemModel::GetChoices(const QModelIndex& index) const
{
    QVector<Choice> choices;
    if (index.column() == TypeColumn) {
        const QVector<RpaParamType> types = RpaParamItem::GetTypes();
        for (const RpaParamType type : types)
            choices << Choice{RpaParamItem::GetTypeTitle(type), static_cast<int>(type), TypeIcon(type)};
    } else if (index.column() == LimitsColumn && items.at(index.row()).TakesPattern()) {
        choices << Choice{QStringLiteral("不限"), QString(), {}};
        for (const RpaTextPattern& pattern : RpaTextPattern::GetKnown())
            choices << Choice{pattern.title, pattern.title, {}};
    } else if (index.column() == LimitsColumn && items.at(index.row()).type == RpaParamType::Group) {
        choices << Choice{QStringLiteral("一列"), QStringLiteral("一列"), {}}
                << Choice{QStringLiteral("两列"), QStringLiteral("两列"), {}};
    } else if (index.column() == DefaultColumn) {
        const RpaParamItem& item = items.at(index.row());
        if (item.type == RpaParamType::Switch)
            return {Choice{QStringLiteral("关"), false, {}}, Choice{QStringLiteral("开"), true, {}}};
        for (const QString& choice : item.choices)
            if (item.type == RpaParamType::Choice)
                choices << Choice{choice, choice, {}};
    }
    return choices;
}

bool ParamItemModel::TakesOtherText(const QModelIndex& index) const
{
    return index.column() == LimitsColumn;
}

QVariant ParamItemModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role == Qt::ToolTipRole && orientation == Qt::Horizontal && section == LimitsColumn)
        return QStringLiteral(
            "下拉选择和多项选择：选项，如 甲，乙\n数字和日期：范围，如 1~100\n滑块：范围和步长，如 0~1，步长 "
            "0.1\n"
            "文本和密码：格式，如 手机号码\n多行文本：显示的行数，如 6 行\n文件：扩展名，如 xlsx，csv\n"
            "分组：其后的参数排成一列或两列");
    return RecordModel::headerData(section, orientation, role);
}

bool ParamItemModel::IsTaken(const QString& name, int exceptRow) const
{
    for (int row = 0; row < items.size(); ++row)
        if (row != exceptRow && items.at(row).name == name)
            return true;
    return false;
}

// Writes into the item; the reason when the value is refused.
QString ParamItemModel::Write(RpaParamItem& item, int row, int column, const QVariant& value) const
{
    const QString text = value.toString().trimmed();
    switch (column) {
    case NameColumn:
        if (text.isEmpty() || text.size() > NameLength)
            return QStringLiteral("参数名称为 1 到 %1 个字符").arg(NameLength);
        if (IsTaken(text, row))
            return QStringLiteral("参数名称“%1”已存在").arg(text);
        item.name = text;
        return {};
    case LabelColumn:
        item.label = text.left(NameLength);
        return {};
    case TypeColumn:
        item.type = static_cast<RpaParamType>(value.toInt());
        // What does not fit the new type is dropped rather than kept where nobody sees it.
        if (!item.Fit(item.defaultValue))
            item.defaultValue = QVariant();
        if (!item.Fit(item.value))
            item.value = QVariant();
        item.least = QVariant();
        item.most = QVariant();
        item.pattern.clear();
        item.endings.clear();
        item.step = 0;
        item.lines = 0;
        item.columns = 0;
        return {};
    case DefaultColumn: {
        QVariant fitting = text.isEmpty() ? QVariant() : value;
        if (item.IsList() && fitting.isValid())
            fitting = ParamLimits::SplitTexts(text);
        if (!item.Fit(fitting))
            return QStringLiteral("“%1”不是有效的%2").arg(text, RpaParamItem::GetTypeTitle(item.type));
        item.defaultValue = fitting;
        return {};
    }
    default:
        return ParamLimits::Write(item, text);
    }
}

bool ParamItemModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (!index.isValid() || index.row() >= items.size())
        return false;
    QVector<RpaParamItem> after = items;
    RpaParamItem& item = after[index.row()];
    if (index.column() == RequiredColumn && role == Qt::CheckStateRole) {
        item.required = value.toInt() == Qt::Checked;
    } else if (role == Qt::EditRole) {
        const QString refusal = Write(item, index.row(), index.column(), value);
        if (!refusal.isEmpty()) {
            emit SigRefused(refusal);
            return false;
        }
    }
    return after != items && Change(QStringLiteral("修改参数"), after);
}

bool ParamItemModel::AddRecord()
{
    if (!paramData)
        return false;
    QVector<RpaParamItem> after = items;
    RpaParamItem item;
    item.name = paramData->MakeFreeName(QStringLiteral("参数"));
    after << item;
    return Change(QStringLiteral("添加参数"), after);
}

bool ParamItemModel::RemoveRecords(const QVector<int>& rows)
{
    return Change(QStringLiteral("删除参数"), ListActs::Without(items, rows));
}

bool ParamItemModel::MoveRecord(int from, int to)
{
    return Change(QStringLiteral("移动参数"), ListActs::Moved(items, from, to));
}

bool ParamItemModel::Change(const QString& text, const QVector<RpaParamItem>& after)
{
    if (!paramData)
        return false;
    undoStack.push(new ListCommand<RpaParamData, RpaParamItem>(text, paramData, items, after));
    return true;
}
