// SPDX-License-Identifier: Apache-2.0

#include <RpaAppData/RpaParamData.h>
#include <RpaAppData/RpaTextPattern.h>

#include <QDate>
#include <QDateTime>
#include <QRegularExpression>

namespace
{
// How the order of a type is told, and how one of its values is.
struct RangeWords
{
    QString below;
    QString above;
};

RangeWords WordsOf(RpaParamType type)
{
    if (type == RpaParamType::Date || type == RpaParamType::DateTime)
        return {QStringLiteral("“%1”不能早于 %2"), QStringLiteral("“%1”不能晚于 %2")};
    return {QStringLiteral("“%1”不能小于 %2"), QStringLiteral("“%1”不能大于 %2")};
}

bool IsBefore(const QVariant& one, const QVariant& other)
{
    switch (static_cast<QMetaType::Type>(one.userType())) {
    case QMetaType::QDate:
        return one.toDate() < other.toDate();
    case QMetaType::QDateTime:
        return one.toDateTime() < other.toDateTime();
    default:
        return one.toDouble() < other.toDouble();
    }
}

QString RangeProblem(const RpaParamItem& item)
{
    const QVariant value = item.GetEffectiveValue();
    const bool isBelow = item.least.isValid() && IsBefore(value, item.least);
    const bool isAbove = item.most.isValid() && IsBefore(item.most, value);
    if (!isBelow && !isAbove)
        return {};
    if (item.least.isValid() && item.most.isValid())
        return QStringLiteral("“%1”应在 %2 到 %3 之间")
            .arg(item.GetTitle(), RpaParamItem::GetText(item.least), RpaParamItem::GetText(item.most));
    const RangeWords words = WordsOf(item.type);
    return (isBelow ? words.below : words.above)
        .arg(item.GetTitle(), RpaParamItem::GetText(isBelow ? item.least : item.most));
}

QString PatternProblem(const RpaParamItem& item)
{
    if (RpaTextPattern::Matches(item.pattern, item.GetEffectiveValue().toString()))
        return {};
    const RpaTextPattern known = RpaTextPattern::Find(item.pattern);
    if (!known.title.isEmpty())
        return QStringLiteral("“%1”不是有效的%2，例如 %3").arg(item.GetTitle(), known.title, known.example);
    return item.hint.isEmpty() ? QStringLiteral("“%1”的格式不符合要求").arg(item.GetTitle())
                               : QStringLiteral("“%1”的格式不符合要求：%2").arg(item.GetTitle(), item.hint);
}

bool IsPicked(RpaParamType type)
{
    switch (type) {
    case RpaParamType::Choice:
    case RpaParamType::Choices:
    case RpaParamType::Date:
    case RpaParamType::DateTime:
    case RpaParamType::File:
    case RpaParamType::Files:
    case RpaParamType::Folder:
        return true;
    default:
        return false;
    }
}

bool IsEmpty(const RpaParamItem& item)
{
    const QVariant value = item.GetEffectiveValue();
    return item.IsList() ? value.toStringList().isEmpty() : value.toString().trimmed().isEmpty();
}

QString EndingProblem(const RpaParamItem& item)
{
    const QVariant value = item.GetEffectiveValue();
    const QStringList paths = item.IsList() ? value.toStringList() : QStringList(value.toString());
    for (const QString& path : paths) {
        const QString name = path.section(QRegularExpression(QStringLiteral("[/\\\\]")), -1);
        const QString ending =
            name.contains(QLatin1Char('.')) ? name.section(QLatin1Char('.'), -1) : QString();
        if (!item.endings.contains(ending, Qt::CaseInsensitive))
            return QStringLiteral("“%1”中的“%2”不是 %3 文件")
                .arg(item.GetTitle(), name.left(40), item.endings.join(QChar(0x3001)));
    }
    return {};
}
} // namespace

bool RpaParamItem::IsMissing() const
{
    if (!required || !CanBeMissing())
        return false;
    // A number that nobody entered counts as 0, but is not what was asked for.
    if (type == RpaParamType::Number)
        return !value.isValid() && !defaultValue.isValid();
    return IsEmpty(*this);
}

QString RpaParamItem::GetProblem() const
{
    if (IsMissing())
        return (IsPicked(type) ? QStringLiteral("请选择“%1”") : QStringLiteral("请填写“%1”")).arg(GetTitle());
    const bool isNumber = type == RpaParamType::Number || type == RpaParamType::Slider;
    const bool isEmpty = IsList() ? IsEmpty(*this) : GetEffectiveValue().toString().isEmpty();
    if (!isNumber && isEmpty)
        return {};
    if (TakesRange())
        return RangeProblem(*this);
    if (TakesEndings() && !endings.isEmpty())
        return EndingProblem(*this);
    return TakesPattern() && !pattern.isEmpty() ? PatternProblem(*this) : QString();
}
