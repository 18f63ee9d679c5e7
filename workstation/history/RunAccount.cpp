// SPDX-License-Identifier: Apache-2.0

#include "RunAccount.h"

#include "RunWords.h"
#include "SpanWords.h"

#include <QStringList>

#include <algorithm>

namespace
{
constexpr int spansTold = 20;
constexpr int linesTold = 1000;

QString ParameterText(const RpaRunRecord& run)
{
    QStringList lines;
    for (const RpaRunValue& value : run.parameters)
        lines << QStringLiteral("%1 = %2").arg(value.name, value.text);
    return lines.join(QLatin1Char('\n'));
}

QString CallText(const RpaRunFailure& failure)
{
    QStringList lines;
    for (const RpaRunFrame& frame : failure.stack)
        lines << SpanWords::Place(frame.place);
    return lines.join(QLatin1Char('\n'));
}

QString VariableText(const RpaRunFailure& failure)
{
    QStringList lines;
    for (const RpaRunScope& scope : failure.scopes)
        for (const RpaRunVariable& variable : scope.variables)
            lines << QStringLiteral("%1 = %2").arg(variable.name, variable.text);
    return lines.join(QLatin1Char('\n'));
}

QString SpanText(const RpaRunSpans& spans)
{
    QStringList lines;
    for (int i = spans.spans.size() - 1; i >= 0 && lines.size() < spansTold; --i)
        if (spans.spans.at(i).kind != RpaSpanKind::Position)
            lines.prepend(
                SpanWords::Span(spans.spans.at(i)).replace(QLatin1Char('\n'), QStringLiteral("；")));
    return lines.join(QLatin1Char('\n'));
}
} // namespace

QVector<QPair<QString, QString>> RunAccount::Parts(const RpaRunRecord& run, const QVector<RpaLogLine>& log,
                                                   const RpaRunDetails& details)
{
    QVector<QPair<QString, QString>> parts{
        {QStringLiteral("参数"), ParameterText(run)},
        {QStringLiteral("扩展包"), run.packages.join(QLatin1Char('\n'))},
        {QStringLiteral("调用"), CallText(details.failure)},
        {QStringLiteral("变量"), VariableText(details.failure)},
        {QStringLiteral("最后的操作"), SpanText(details.spans)},
    };
    parts.erase(std::remove_if(parts.begin(), parts.end(),
                               [](const QPair<QString, QString>& part) { return part.second.isEmpty(); }),
                parts.end());
    const QVector<RpaLogLine> told = log.mid(qMax(0, log.size() - linesTold));
    parts.append({QStringLiteral("运行日志"), RunWords::Log(run, told)});
    return parts;
}
