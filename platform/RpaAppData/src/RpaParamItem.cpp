// SPDX-License-Identifier: Apache-2.0

#include "TypeRow_p.h"
#include "TypedValue_p.h"

#include <RpaAppData/RpaParamData.h>

#include <QDate>
#include <QDateTime>

#include <tuple>

namespace
{
enum Trait
{
    InRange = 1, // may have a least and a most
    OfPattern = 2,
    NotDemanded = 4, // always shows something
};

bool FitNothing(QVariant&)
{
    return false;
}

bool FitPercent(QVariant& value)
{
    QVariant number = value;
    if (!TypedValue::ToNumber(number) || number.toDouble() < 0 || number.toDouble() > 100)
        return false;
    value = number;
    return true;
}

using Row = TypeRow<RpaParamType>;

const QVector<Row>& ParamTypeRows()
{
    using Type = RpaParamType;
    using namespace TypedValue;
    static const QVector<Row> rows{
        {Type::Text, "text", QStringLiteral("文本"), ToText, QString(), OfPattern},
        {Type::Lines, "lines", QStringLiteral("多行文本"), ToText},
        {Type::Number, "number", QStringLiteral("数字"), ToNumber, 0.0, InRange},
        {Type::Slider, "slider", QStringLiteral("滑块"), ToNumber, 0.0, InRange | NotDemanded},
        {Type::Date, "date", QStringLiteral("日期"), ToDate, QDate(), InRange},
        {Type::DateTime, "datetime", QStringLiteral("日期时间"), ToDateTime, QDateTime(), InRange},
        {Type::Choice, "choice", QStringLiteral("下拉选择"), ToText},
        {Type::Choices, "choices", QStringLiteral("多项选择"), ToTexts, QStringList()},
        {Type::Switch, "switch", QStringLiteral("开关"), ToSwitch, false, NotDemanded},
        {Type::File, "file", QStringLiteral("文件"), ToText},
        {Type::Files, "files", QStringLiteral("多个文件"), ToTexts, QStringList()},
        {Type::Folder, "folder", QStringLiteral("文件夹"), ToText},
        {Type::Password, "password", QStringLiteral("密码"), ToText, QString(), OfPattern},
        {Type::Progress, "progress", QStringLiteral("进度条"), FitPercent, 0.0, NotDemanded},
        {Type::Picture, "picture", QStringLiteral("图片"), ToText, QString(), NotDemanded},
        {Type::Group, "group", QStringLiteral("分组"), FitNothing, QString(), NotDemanded},
    };
    return rows;
}

const Row& RowOf(RpaParamType type)
{
    return TypeRows::Find(ParamTypeRows(), type);
}

auto Tie(const RpaParamItem& item)
{
    return std::tie(item.name, item.label, item.type, item.foreignType, item.isResult, item.choices,
                    item.required, item.step, item.lines, item.columns, item.endings, item.pattern, item.hint,
                    item.unknown);
}

QVector<QVariant> Values(const RpaParamItem& item)
{
    return {item.defaultValue, item.value, item.initial, item.least, item.most};
}

// Those of the choices that are wanted, in their order; false when others are.
bool PickChoices(const QStringList& choices, QVariant& candidate)
{
    QStringList wanted = candidate.toStringList();
    QStringList picked;
    for (const QString& choice : choices)
        if (wanted.removeAll(choice) > 0)
            picked << choice;
    if (!wanted.isEmpty())
        return false;
    candidate = candidate.userType() == QMetaType::QString ? QVariant(picked.first()) : QVariant(picked);
    return true;
}
} // namespace

QVariant RpaParamItem::GetEffectiveValue() const
{
    if (value.isValid())
        return value;
    if (defaultValue.isValid())
        return defaultValue;
    return type == RpaParamType::Slider && least.isValid() ? QVariant(least.toDouble()) : RowOf(type).empty;
}

bool RpaParamItem::Fit(QVariant& candidate) const
{
    if (TypedValue::IsTooLong(candidate))
        return false;
    if (!candidate.isValid() || IsForeign())
        return true;
    QVariant fitting = candidate;
    if (!RowOf(type).fit(fitting) || (TakesChoices() && !PickChoices(choices, fitting)))
        return false;
    candidate = fitting;
    return true;
}

bool RpaParamItem::TakesRange() const
{
    return RowOf(type).traits & InRange;
}

bool RpaParamItem::TakesPattern() const
{
    return RowOf(type).traits & OfPattern;
}

bool RpaParamItem::CanBeMissing() const
{
    return !(RowOf(type).traits & NotDemanded);
}

QString RpaParamItem::GetText(const QVariant& value)
{
    switch (static_cast<QMetaType::Type>(value.userType())) {
    case QMetaType::QStringList:
        return value.toStringList().join(QChar(0xff0c));
    case QMetaType::QDate:
        return value.toDate().toString(Qt::ISODate);
    case QMetaType::QDateTime:
        return value.toDateTime().toString(QStringLiteral("yyyy-MM-dd HH:mm"));
    default:
        return value.toString();
    }
}

bool RpaParamItem::operator==(const RpaParamItem& other) const
{
    return Tie(*this) == Tie(other) && TypedValue::IsSame({Values(*this)}, {Values(other)});
}

QString RpaParamItem::GetTypeName(RpaParamType type)
{
    return QLatin1String(RowOf(type).name);
}

QString RpaParamItem::GetTypeTitle(RpaParamType type)
{
    return RowOf(type).title;
}

QVector<RpaParamType> RpaParamItem::GetTypes()
{
    return TypeRows::Types(ParamTypeRows());
}
