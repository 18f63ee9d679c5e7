#include <RpaAppData/RpaParamData.h>
#include <RpaAppData/RpaTextPattern.h>

#include <QDate>

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
    if (type == RpaParamType::Date)
        return {QStringLiteral("“%1”不能早于 %2"), QStringLiteral("“%1”不能晚于 %2")};
    return {QStringLiteral("“%1”不能小于 %2"), QStringLiteral("“%1”不能大于 %2")};
}

QString Shown(const QVariant& value)
{
    return value.userType() == QMetaType::QDate ? value.toDate().toString(Qt::ISODate) : value.toString();
}

bool IsBefore(const QVariant& one, const QVariant& other)
{
    return one.userType() == QMetaType::QDate ? one.toDate() < other.toDate()
                                              : one.toDouble() < other.toDouble();
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
            .arg(item.GetTitle(), Shown(item.least), Shown(item.most));
    const RangeWords words = WordsOf(item.type);
    return (isBelow ? words.below : words.above)
        .arg(item.GetTitle(), Shown(isBelow ? item.least : item.most));
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
    return type == RpaParamType::Choice || type == RpaParamType::Date || type == RpaParamType::File;
}
} // namespace

bool RpaParamItem::TakesRange() const
{
    return type == RpaParamType::Number || type == RpaParamType::Date;
}

bool RpaParamItem::TakesPattern() const
{
    return type == RpaParamType::Text || type == RpaParamType::Password;
}

bool RpaParamItem::IsMissing() const
{
    if (!required || type == RpaParamType::Switch)
        return false;
    // A number that nobody entered counts as 0, but is not what was asked for.
    if (type == RpaParamType::Number)
        return !value.isValid() && !defaultValue.isValid();
    return GetEffectiveValue().toString().trimmed().isEmpty();
}

QString RpaParamItem::GetProblem() const
{
    if (IsMissing())
        return (IsPicked(type) ? QStringLiteral("请选择“%1”") : QStringLiteral("请填写“%1”")).arg(GetTitle());
    const QVariant effective = GetEffectiveValue();
    const bool isEmpty = type != RpaParamType::Number && effective.toString().isEmpty();
    if (isEmpty)
        return {};
    if (TakesRange())
        return RangeProblem(*this);
    return TakesPattern() && !pattern.isEmpty() ? PatternProblem(*this) : QString();
}
