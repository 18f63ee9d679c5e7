// SPDX-License-Identifier: Apache-2.0

#include "SpanWords.h"

#include <QStringList>

QString SpanWords::Kind(RpaSpanKind kind)
{
    switch (kind) {
    case RpaSpanKind::Position:
        return QStringLiteral("执行");
    case RpaSpanKind::File:
        return QStringLiteral("文件");
    case RpaSpanKind::Excel:
        return QStringLiteral("Excel");
    case RpaSpanKind::Http:
        return QStringLiteral("网络");
    case RpaSpanKind::Browser:
        return QStringLiteral("浏览器");
    case RpaSpanKind::Dialog:
        return QStringLiteral("对话框");
    case RpaSpanKind::Mail:
        return QStringLiteral("邮件");
    case RpaSpanKind::Database:
        return QStringLiteral("数据库");
    case RpaSpanKind::Program:
        break;
    }
    return QStringLiteral("程序");
}

QString SpanWords::Time(qint64 microseconds)
{
    if (microseconds < 1000)
        return QStringLiteral("%1 微秒").arg(microseconds);
    const qint64 milliseconds = microseconds / 1000;
    if (milliseconds < 1000)
        return QStringLiteral("%1 毫秒").arg(milliseconds);
    const qint64 seconds = milliseconds / 1000;
    if (seconds < 60)
        return QStringLiteral("%1 秒").arg(double(milliseconds) / 1000, 0, 'f', 1);
    return QStringLiteral("%1 分 %2 秒").arg(seconds / 60).arg(seconds % 60);
}

QString SpanWords::Place(const RpaRunPlace& place)
{
    const QString where =
        (place.statementId.isEmpty() ? QStringLiteral("%1 第 %2 行") : QStringLiteral("%1 第 %2 步"))
            .arg(place.processName)
            .arg(place.line);
    return place.title.isEmpty() ? where : where + QLatin1Char(' ') + place.title;
}

QString SpanWords::Span(const RpaRunSpan& span)
{
    QStringList lines{Place(span.place)};
    if (span.kind == RpaSpanKind::Position) {
        lines << QStringLiteral("%1时正在执行这里").arg(Time(span.start));
        return lines.join(QLatin1Char('\n'));
    }
    lines << QStringLiteral("%1：%2  %3").arg(Kind(span.kind), span.call, span.input).trimmed();
    lines << QStringLiteral("开始于 %1，用时 %2").arg(Time(span.start), Time(span.duration));
    if (!span.result.isEmpty())
        lines << QStringLiteral("结果：%1").arg(span.result);
    if (!span.error.isEmpty())
        lines << QStringLiteral("失败：%1").arg(span.error);
    return lines.join(QLatin1Char('\n'));
}

QString SpanWords::Sum(const RpaRunSpanSum& sum)
{
    QString text = QStringLiteral("较早的 %1 次%2调用合计 %3，最长 %4")
                       .arg(sum.count)
                       .arg(Kind(sum.kind), Time(sum.total), Time(sum.longest));
    if (sum.failures > 0)
        text += QStringLiteral("，失败 %1 次").arg(sum.failures);
    return text;
}
