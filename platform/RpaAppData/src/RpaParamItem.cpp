// SPDX-License-Identifier: Apache-2.0

#include "TypedValue_p.h"

#include <RpaAppData/RpaParamData.h>

#include <QDate>
#include <QDateTime>

#include <tuple>

namespace
{
struct TypeRow
{
    RpaParamType type;
    const char* name;
    QString title;
};

const QVector<TypeRow>& TypeRows()
{
    static const QVector<TypeRow> rows{
        {RpaParamType::Text, "text", QStringLiteral("文本")},
        {RpaParamType::Lines, "lines", QStringLiteral("多行文本")},
        {RpaParamType::Number, "number", QStringLiteral("数字")},
        {RpaParamType::Slider, "slider", QStringLiteral("滑块")},
        {RpaParamType::Date, "date", QStringLiteral("日期")},
        {RpaParamType::DateTime, "datetime", QStringLiteral("日期时间")},
        {RpaParamType::Choice, "choice", QStringLiteral("下拉选择")},
        {RpaParamType::Choices, "choices", QStringLiteral("多项选择")},
        {RpaParamType::Switch, "switch", QStringLiteral("开关")},
        {RpaParamType::File, "file", QStringLiteral("文件")},
        {RpaParamType::Files, "files", QStringLiteral("多个文件")},
        {RpaParamType::Folder, "folder", QStringLiteral("文件夹")},
        {RpaParamType::Password, "password", QStringLiteral("密码")},
        {RpaParamType::Progress, "progress", QStringLiteral("进度条")},
        {RpaParamType::Picture, "picture", QStringLiteral("图片")},
        {RpaParamType::Group, "group", QStringLiteral("分组")},
    };
    return rows;
}

auto Tie(const RpaParamItem& item)
{
    return std::tie(item.name, item.label, item.type, item.foreignType, item.defaultValue, item.value,
                    item.isResult, item.initial, item.choices, item.required, item.least, item.most,
                    item.step, item.lines, item.columns, item.endings, item.pattern, item.hint, item.unknown);
}

bool FitChoices(const QStringList& choices, QVariant& candidate)
{
    QVariant texts = candidate;
    if (!TypedValue::ToTexts(texts))
        return false;
    const QStringList wanted = texts.toStringList();
    for (const QString& choice : wanted)
        if (!choices.contains(choice))
            return false;
    QStringList picked;
    for (const QString& choice : choices)
        if (wanted.contains(choice))
            picked << choice;
    candidate = picked;
    return true;
}

bool FitProgress(QVariant& candidate)
{
    QVariant number = candidate;
    if (!TypedValue::ToNumber(number) || number.toDouble() < 0 || number.toDouble() > 100)
        return false;
    candidate = number;
    return true;
}
} // namespace

QVariant RpaParamItem::GetEffectiveValue() const
{
    if (value.isValid())
        return value;
    if (defaultValue.isValid())
        return defaultValue;
    switch (type) {
    case RpaParamType::Number:
    case RpaParamType::Progress:
        return 0.0;
    case RpaParamType::Slider:
        return least.isValid() ? least.toDouble() : 0.0;
    case RpaParamType::Date:
        return QDate();
    case RpaParamType::DateTime:
        return QDateTime();
    case RpaParamType::Switch:
        return false;
    case RpaParamType::Files:
    case RpaParamType::Choices:
        return QStringList();
    default:
        return QString();
    }
}

bool RpaParamItem::Fit(QVariant& candidate) const
{
    if (TypedValue::IsTooLong(candidate))
        return false;
    // What a newer client's type may hold is unknown here.
    const bool isForeign = type == RpaParamType::Text && !foreignType.isEmpty();
    if (!candidate.isValid() || isForeign)
        return true;
    switch (type) {
    case RpaParamType::Number:
    case RpaParamType::Slider:
        return TypedValue::ToNumber(candidate);
    case RpaParamType::Progress:
        return FitProgress(candidate);
    case RpaParamType::Date:
        return TypedValue::ToDate(candidate);
    case RpaParamType::DateTime:
        return TypedValue::ToDateTime(candidate);
    case RpaParamType::Switch:
        return TypedValue::ToSwitch(candidate);
    case RpaParamType::Choice: {
        QVariant text = candidate;
        if (!TypedValue::ToText(text) || !choices.contains(text.toString()))
            return false;
        candidate = text;
        return true;
    }
    case RpaParamType::Choices:
        return FitChoices(choices, candidate);
    case RpaParamType::Files:
        return TypedValue::ToTexts(candidate);
    case RpaParamType::Group:
        return false;
    default:
        return TypedValue::ToText(candidate);
    }
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
    return Tie(*this) == Tie(other);
}

QString RpaParamItem::GetTypeName(RpaParamType type)
{
    for (const TypeRow& row : TypeRows())
        if (row.type == type)
            return QLatin1String(row.name);
    return QString();
}

QString RpaParamItem::GetTypeTitle(RpaParamType type)
{
    for (const TypeRow& row : TypeRows())
        if (row.type == type)
            return row.title;
    return QString();
}

QVector<RpaParamType> RpaParamItem::GetTypes()
{
    QVector<RpaParamType> types;
    for (const TypeRow& row : TypeRows())
        types.append(row.type);
    return types;
}
