#include "ParamLimits_p.h"

#include <RpaAppData/RpaParamData.h>
#include <RpaAppData/RpaTextPattern.h>

#include <QDate>
#include <QRegularExpression>

namespace
{
// Separates the choices that the author types into one cell; both are on a Chinese keyboard.
QStringList SplitChoices(QString text)
{
    text.replace(QChar(0xff0c), QLatin1Char(',')).replace(QChar(0x3001), QLatin1Char(','));
    QStringList choices;
    const QStringList parts = text.split(QLatin1Char(','), Qt::SkipEmptyParts);
    for (const QString& part : parts) {
        if (!part.trimmed().isEmpty() && !choices.contains(part.trimmed()))
            choices << part.trimmed();
    }
    return choices;
}

QString Shown(const QVariant& limit)
{
    return limit.userType() == QMetaType::QDate ? limit.toDate().toString(Qt::ISODate) : limit.toString();
}

bool IsReversed(const QVariant& least, const QVariant& most)
{
    if (!least.isValid() || !most.isValid())
        return false;
    return least.userType() == QMetaType::QDate ? most.toDate() < least.toDate()
                                                : most.toDouble() < least.toDouble();
}

QString WriteRange(RpaParamItem& item, const QString& text)
{
    static const QRegularExpression between(QStringLiteral("[~～至]"));
    const QStringList ends = text.isEmpty() ? QStringList{QString(), QString()} : text.split(between);
    QVariant limits[2];
    bool fits = ends.size() == 2;
    for (int i = 0; fits && i < 2; ++i) {
        limits[i] = ends.at(i).trimmed().isEmpty() ? QVariant() : QVariant(ends.at(i).trimmed());
        fits = item.Fit(limits[i]);
    }
    if (!fits)
        return item.type == RpaParamType::Date
                   ? QStringLiteral("日期的限制写成“最早~最晚”，例如 2024-01-01~2024-12-31 或 2024-01-01~")
                   : QStringLiteral("数字的限制写成“最小~最大”，例如 1~100、1~ 或 ~100");
    if (IsReversed(limits[0], limits[1]))
        return QStringLiteral("“%1”中前一个值应不大于后一个值").arg(text);
    item.least = limits[0];
    item.most = limits[1];
    return {};
}

QString WritePattern(RpaParamItem& item, const QString& text)
{
    QString expression = text;
    for (const RpaTextPattern& known : RpaTextPattern::GetKnown()) {
        if (known.title == text)
            expression = known.expression;
    }
    if (!RpaTextPattern::IsUsable(expression))
        return QStringLiteral("“%1”不是有效的格式：请选择一种，或输入不超过 200 个字符的正则表达式")
            .arg(text.left(20));
    item.pattern = expression;
    return {};
}
} // namespace

bool ParamLimits::Has(const RpaParamItem& item)
{
    return item.type == RpaParamType::Choice || item.TakesRange() || item.TakesPattern();
}

QString ParamLimits::TextOf(const RpaParamItem& item)
{
    if (item.TakesRange())
        return item.least.isValid() || item.most.isValid()
                   ? Shown(item.least) + QLatin1Char('~') + Shown(item.most)
                   : QString();
    if (!item.TakesPattern())
        return item.choices.join(QChar(0xff0c));
    const QString title = RpaTextPattern::Find(item.pattern).title;
    return title.isEmpty() ? item.pattern : title;
}

QString ParamLimits::Write(RpaParamItem& item, const QString& text)
{
    if (item.TakesRange())
        return WriteRange(item, text);
    if (item.TakesPattern())
        return WritePattern(item, text);
    item.choices = SplitChoices(text);
    return {};
}
