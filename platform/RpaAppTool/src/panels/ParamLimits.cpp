// SPDX-License-Identifier: Apache-2.0

#include "FileEndings_p.h"
#include "ParamLimits_p.h"

#include <RpaAppData/RpaParamData.h>
#include <RpaAppData/RpaTextPattern.h>

#include <QDateTime>
#include <QRegularExpression>

#include <cmath>

namespace
{
bool IsReversed(const QVariant& least, const QVariant& most)
{
    if (!least.isValid() || !most.isValid())
        return false;
    if (least.userType() == QMetaType::QDateTime)
        return most.toDateTime() < least.toDateTime();
    return least.userType() == QMetaType::QDate ? most.toDate() < least.toDate()
                                                : most.toDouble() < least.toDouble();
}

QString RangeHelp(RpaParamType type)
{
    switch (type) {
    case RpaParamType::Date:
        return QStringLiteral("日期的限制写成“最早~最晚”，例如 2024-01-01~2024-12-31 或 2024-01-01~");
    case RpaParamType::DateTime:
        return QStringLiteral("日期时间的限制写成“最早~最晚”，例如 2024-01-01 08:00~2024-01-01 18:00");
    case RpaParamType::Slider:
        return QStringLiteral("滑块的限制写成“最小~最大，步长”，例如 0~100 或 0~1，步长 0.1");
    default:
        return QStringLiteral("数字的限制写成“最小~最大”，例如 1~100、1~ 或 ~100");
    }
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
        return RangeHelp(item.type);
    if (IsReversed(limits[0], limits[1]))
        return QStringLiteral("“%1”中前一个值应不大于后一个值").arg(text);
    item.least = limits[0];
    item.most = limits[1];
    return {};
}

// "0~100，步长 5"; a slider needs both ends to have a length.
QString WriteSlider(RpaParamItem& item, const QString& text)
{
    static const QRegularExpression form(QStringLiteral("^(.*?)(?:[，,\\s]*步长\\s*(.+))?$"));
    const QRegularExpressionMatch match = form.match(text);
    bool isNumber = true;
    const double step = match.captured(2).isEmpty() ? 0 : match.captured(2).trimmed().toDouble(&isNumber);
    RpaParamItem written = item;
    const QString refusal = WriteRange(written, match.captured(1).trimmed());
    const bool isHalf = written.least.isValid() != written.most.isValid();
    if (!refusal.isEmpty() || isHalf || !isNumber || !std::isfinite(step) || step < 0)
        return RangeHelp(item.type);
    written.step = step;
    item = written;
    return {};
}

QString SliderText(const RpaParamItem& item)
{
    const QString range =
        item.least.isValid() && item.most.isValid()
            ? RpaParamItem::GetText(item.least) + QLatin1Char('~') + RpaParamItem::GetText(item.most)
            : QString();
    const QString step = item.step > 0 ? QStringLiteral("步长 %1").arg(item.step, 0, 'g', 10) : QString();
    return range + (range.isEmpty() || step.isEmpty() ? QString() : QStringLiteral("，")) + step;
}

// A number within bounds, with or without its unit.
QString WriteCount(const QString& text, int most, const QString& help, int& count)
{
    static const QRegularExpression digits(QStringLiteral("^(\\d{0,3})\\s*[行列]?$"));
    const QRegularExpressionMatch match = digits.match(text);
    const int wanted = match.captured(1).toInt();
    if (!match.hasMatch() || wanted > most)
        return help;
    count = wanted;
    return {};
}

QString WriteEndings(RpaParamItem& item, const QString& text)
{
    QStringList endings;
    const QStringList parts = ParamLimits::SplitTexts(text);
    for (QString part : parts) {
        part.remove(QRegularExpression(QStringLiteral("^\\*?\\.")));
        if (!FileEndings::IsGood(part))
            return QStringLiteral("“%1”不是文件的扩展名，请写成 xlsx，csv").arg(part.left(20));
        endings << part;
    }
    item.endings = endings;
    return {};
}

QString WritePattern(RpaParamItem& item, const QString& text)
{
    QString expression = text;
    for (const RpaTextPattern& known : RpaTextPattern::GetKnown())
        if (known.title == text)
            expression = known.expression;
    if (!RpaTextPattern::IsUsable(expression))
        return QStringLiteral("“%1”不是有效的格式：请选择一种，或输入不超过 200 个字符的正则表达式")
            .arg(text.left(20));
    item.pattern = expression;
    return {};
}
} // namespace

// Both separators are on a Chinese keyboard.
QStringList ParamLimits::SplitTexts(QString text)
{
    text.replace(QChar(0xff0c), QLatin1Char(',')).replace(QChar(0x3001), QLatin1Char(','));
    QStringList texts;
    const QStringList parts = text.split(QLatin1Char(','), Qt::SkipEmptyParts);
    for (const QString& part : parts)
        if (!part.trimmed().isEmpty() && !texts.contains(part.trimmed()))
            texts << part.trimmed();
    return texts;
}

bool ParamLimits::Has(const RpaParamItem& item)
{
    return item.TakesChoices() || item.TakesRange() || item.TakesPattern() || item.TakesEndings() ||
           item.type == RpaParamType::Lines || item.type == RpaParamType::Group;
}

QString ParamLimits::TextOf(const RpaParamItem& item)
{
    if (item.type == RpaParamType::Slider)
        return SliderText(item);
    if (item.TakesRange())
        return item.least.isValid() || item.most.isValid()
                   ? RpaParamItem::GetText(item.least) + QLatin1Char('~') + RpaParamItem::GetText(item.most)
                   : QString();
    if (item.type == RpaParamType::Lines)
        return item.lines > 0 ? QStringLiteral("%1 行").arg(item.lines) : QString();
    if (item.type == RpaParamType::Group)
        return item.columns > 1 ? QStringLiteral("两列") : QStringLiteral("一列");
    if (item.TakesEndings())
        return item.endings.join(QChar(0xff0c));
    if (!item.TakesPattern())
        return item.choices.join(QChar(0xff0c));
    const QString title = RpaTextPattern::Find(item.pattern).title;
    return title.isEmpty() ? item.pattern : title;
}

QString ParamLimits::Write(RpaParamItem& item, const QString& text)
{
    if (item.type == RpaParamType::Slider)
        return WriteSlider(item, text);
    if (item.TakesRange())
        return WriteRange(item, text);
    if (item.TakesPattern())
        return WritePattern(item, text);
    if (item.TakesEndings())
        return WriteEndings(item, text);
    if (item.type == RpaParamType::Lines)
        return WriteCount(text, RpaParamItem::mostLines, QStringLiteral("显示的行数是 2 到 20，例如 6 行"),
                          item.lines);
    if (item.type == RpaParamType::Group) {
        QString counted = text;
        counted.replace(QChar(0x4e00), QLatin1Char('1')).replace(QChar(0x4e24), QLatin1Char('2'));
        return WriteCount(counted, RpaParamItem::mostColumns, QStringLiteral("分组中的参数排成一列或两列"),
                          item.columns);
    }
    item.choices = SplitTexts(text);
    return {};
}
