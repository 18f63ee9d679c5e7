// SPDX-License-Identifier: Apache-2.0

#include "NamedFields_p.h"
#include "ParamFields_p.h"
#include "ParamLimits_p.h"

#include <RpaAppData/RpaTextPattern.h>

#include <QMap>

namespace
{
using ParamItemField = RecordField<RpaParamItem>;
using Choice = RecordModel::Choice;
using Others = QVector<RpaParamItem>;

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

// The limits are those of the former type. What the new one has no use for is dropped by the data.
void DropLimits(RpaParamItem& item)
{
    item.least = item.most = QVariant();
    item.pattern.clear();
    item.endings.clear();
}

ParamItemField LabelField()
{
    const auto write = [](RpaParamItem& item, const QVariant& value, const Others&) {
        constexpr int longest = 40;
        item.label = value.toString().trimmed().left(longest);
        return QString();
    };
    return {QStringLiteral("标签"),
            [](const RpaParamItem& item, int role) { return NamedFields::ShowText(item.label, role); },
            write};
}

QVariant ShowDefault(const RpaParamItem& item, int role)
{
    const bool isOn = item.defaultValue.toBool();
    if (item.type == RpaParamType::Switch && role == Qt::EditRole)
        return isOn;
    if (item.type == RpaParamType::Switch)
        return NamedFields::ShowText(isOn ? QStringLiteral("开") : QStringLiteral("关"), role);
    return NamedFields::ShowText(RpaParamItem::GetText(item.defaultValue), role);
}

QString WriteDefault(RpaParamItem& item, const QVariant& value, const Others&)
{
    const QString text = value.toString().trimmed();
    QVariant fitting = text.isEmpty() ? QVariant() : value;
    if (item.IsList() && fitting.isValid())
        fitting = ParamLimits::SplitTexts(text);
    if (!item.Fit(fitting))
        return QStringLiteral("“%1”不是有效的%2").arg(text, RpaParamItem::GetTypeTitle(item.type));
    item.defaultValue = fitting;
    return {};
}

ParamItemField DefaultField()
{
    const auto choices = [](const RpaParamItem& item) -> QVector<Choice> {
        if (item.type == RpaParamType::Switch)
            return {Choice{QStringLiteral("关"), false}, Choice{QStringLiteral("开"), true}};
        QVector<Choice> all;
        for (const QString& choice : item.choices)
            if (item.type == RpaParamType::Choice)
                all << Choice{choice, choice};
        return all;
    };
    const auto use = [](const RpaParamItem& item) {
        return item.type == RpaParamType::Password || item.type == RpaParamType::Group || item.IsOutput()
                   ? RecordUse::None
                   : RecordUse::Edited;
    };
    return {QStringLiteral("默认值"), ShowDefault, WriteDefault, choices, {100, 62}, use};
}

ParamItemField RequiredField()
{
    const auto use = [](const RpaParamItem& item) {
        return item.CanBeMissing() || item.required ? RecordUse::Checked : RecordUse::None;
    };
    const auto show = [use](const RpaParamItem& item, int role) {
        if (role != Qt::CheckStateRole || use(item) == RecordUse::None)
            return QVariant();
        return QVariant(item.required ? Qt::Checked : Qt::Unchecked);
    };
    const auto write = [](RpaParamItem& item, const QVariant& value, const Others&) {
        item.required = value.toInt() == Qt::Checked;
        return QString();
    };
    return {QStringLiteral("必填"), show, write, {}, {64, 46, true}, use};
}

QVector<Choice> LimitChoices(const RpaParamItem& item)
{
    if (item.type == RpaParamType::Group)
        return {Choice{QStringLiteral("一列"), QStringLiteral("一列")},
                Choice{QStringLiteral("两列"), QStringLiteral("两列")}};
    if (!item.TakesPattern())
        return {};
    QVector<Choice> all{Choice{QStringLiteral("不限"), QString()}};
    for (const RpaTextPattern& pattern : RpaTextPattern::GetKnown())
        all << Choice{pattern.title, pattern.title};
    return all;
}

ParamItemField LimitsField()
{
    const auto show = [](const RpaParamItem& item, int role) {
        return NamedFields::ShowText(ParamLimits::TextOf(item), role);
    };
    const auto write = [](RpaParamItem& item, const QVariant& value, const Others&) {
        return ParamLimits::Write(item, value.toString().trimmed());
    };
    const auto use = [](const RpaParamItem& item) {
        return ParamLimits::Has(item) ? RecordUse::Edited : RecordUse::None;
    };
    ParamItemField field{QStringLiteral("限制"), show, write, LimitChoices, {100, 46}, use, true};
    field.tip = QStringLiteral(
        "下拉选择和多项选择：选项，如 甲，乙\n数字和日期：范围，如 1~100\n滑块：范围和步长，如 0~1，步长 "
        "0.1\n"
        "文本和密码：格式，如 手机号码\n多行文本：显示的行数，如 6 行\n文件：扩展名，如 xlsx，csv\n"
        "分组：其后的参数排成一列或两列");
    return field;
}
} // namespace

QVector<ParamItemField> ParamFields::GetAll()
{
    ParamItemField name = NamedFields::Name<RpaParamItem>(QStringLiteral("名称"), QStringLiteral("参数名称"));
    name.widths.tight = 76;
    ParamItemField label = LabelField();
    label.widths.tight = 76;
    ParamItemField type = NamedFields::TypeOf<RpaParamItem, RpaParamType>(TypeIcon, DropLimits);
    type.widths = {106, 46, true};
    return {name, label, type, DefaultField(), RequiredField(), LimitsField()};
}
