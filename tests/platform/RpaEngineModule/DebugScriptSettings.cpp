// SPDX-License-Identifier: Apache-2.0

#include "DebugScript.h"

void DebugScript::Break(const QString& rest)
{
    const QStringList parts = rest.split(QLatin1Char('|'));
    RpaBreakpoint point;
    point.place = PlaceOf(parts.first());
    for (const QString& part : parts.mid(1)) {
        const QString word = part.section(QLatin1Char(' '), 0, 0);
        const QString value = part.section(QLatin1Char(' '), 1);
        if (word == QStringLiteral("if"))
            point.condition = value;
        else if (word == QStringLiteral("log"))
            point.logText = value;
        else if (word == QStringLiteral("off"))
            point.enabled = false;
        else
            point.hits = value.toInt();
        if (word == QStringLiteral("at"))
            point.hitRule = RpaHitRule::Exactly;
        else if (word == QStringLiteral("every"))
            point.hitRule = RpaHitRule::Every;
    }
    breakpoints.append({parts.first(), point});
    Clear({});
}

void DebugScript::Clear(const QString& rest)
{
    QVector<RpaBreakpoint> given;
    for (int i = breakpoints.size() - 1; i >= 0; --i)
        if (breakpoints.at(i).first == rest)
            breakpoints.removeAt(i);
    for (const auto& entry : qAsConst(breakpoints))
        given.append(entry.second);
    Session()->SetBreakpoints(given);
}

void DebugScript::Errors(const QString& rest)
{
    Session()->SetErrorStop(rest == QStringLiteral("all")         ? RpaErrorStop::All
                            : rest == QStringLiteral("unhandled") ? RpaErrorStop::Unhandled
                                                                  : RpaErrorStop::Never);
}

void DebugScript::Slow(const QString& rest)
{
    Session()->SetSlowMotion(rest.toInt());
}

void DebugScript::Watch(const QString& rest)
{
    Session()->SetWatches({rest});
}

void DebugScript::Plan(const QString& rest)
{
    const QString kind = rest.section(QLatin1Char(' '), 0, 0);
    const QString value = rest.section(QLatin1Char(' '), 1);
    const QString first = value.section(QLatin1Char('-'), 0, 0);
    plan.place = PlaceOf(first);
    if (kind == QStringLiteral("to"))
        plan.kind = RpaRunKind::ToHere;
    else if (kind == QStringLiteral("from"))
        plan.kind = RpaRunKind::FromHere;
    else if (kind == QStringLiteral("first"))
        plan.pauseAtFirst = true;
    else if (kind == QStringLiteral("nostops"))
        plan.ignoresBreakpoints = true;
    else
        plan.kind = RpaRunKind::Only;
    plan.lastLine = value.section(QLatin1Char('-'), -1).toInt();
    for (int number = first.toInt(); visual && number <= plan.lastLine; ++number)
        plan.statementIds << PlaceOf(QString::number(number)).statementId;
}

void DebugScript::Given(const QString& rest)
{
    plan.given.insert(rest.section(QLatin1Char('='), 0, 0), rest.section(QLatin1Char('='), 1));
}
