// SPDX-License-Identifier: Apache-2.0

#include "DebugFrames_p.h"

#include <RpaEngineModule/RpaDebugSession.h>

#include <QHash>

#include <limits>

namespace
{

constexpr int framesAtMost = 200;
constexpr int longestName = 300;
constexpr int longestText = 20000;
constexpr int longestExpression = 10000;

QString Text(const QVariantMap& map, const char* name, int length)
{
    const QVariant value = map.value(QLatin1String(name));
    return value.userType() == QMetaType::QString ? value.toString().left(length) : QString();
}

// Never negative but for the default.
int Number(const QVariantMap& map, const char* name, int missing = 0)
{
    bool ok = false;
    const qint64 number = map.value(QLatin1String(name)).toLongLong(&ok);
    return ok && number >= 0 && number <= std::numeric_limits<int>::max() ? static_cast<int>(number)
                                                                          : missing;
}

bool Flag(const QVariantMap& map, const char* name)
{
    const QVariant value = map.value(QLatin1String(name));
    return value.userType() == QMetaType::Bool && value.toBool();
}

RpaDebugValue ReadValue(const QVariantMap& map)
{
    RpaDebugValue value;
    value.name = Text(map, "name", longestName);
    value.type = Text(map, "type", longestName);
    value.text = Text(map, "text", longestText);
    value.size = Number(map, "size", -1);
    value.handle = Number(map, "handle");
    value.inside = Number(map, "inside");
    value.index = Number(map, "index");
    value.settable = Flag(map, "settable");
    value.changed = Flag(map, "changed");
    value.error = Text(map, "error", longestText);
    return value;
}

QVector<RpaDebugFrame> ReadStack(const QVariant& list, const RpaProgram& program)
{
    QVector<RpaDebugFrame> stack;
    const QVariantList entries = list.toList().mid(0, framesAtMost);
    for (const QVariant& entry : entries) {
        const QVariantList parts = entry.toList();
        const RpaDebugPlace place = DebugFrames::PlaceOf(program, parts.value(1).toInt());
        // What calls the first process is no statement.
        if (place.line > 0)
            stack.append({parts.value(0).toString().left(longestName), place});
    }
    return stack;
}

QString RuleName(RpaHitRule rule)
{
    if (rule == RpaHitRule::Exactly)
        return QStringLiteral("at");
    return rule == RpaHitRule::Every ? QStringLiteral("every") : QStringLiteral("from");
}

// Of a program text; statements that are left out of a visual process are not even translated.
QVariantMap PartOf(const RpaProgram& program, const RpaRunPlan& plan)
{
    if (program.visual || (plan.kind != RpaRunKind::FromHere && plan.kind != RpaRunKind::Only))
        return {};
    const int last = plan.kind == RpaRunKind::Only ? qMax(plan.place.line, plan.lastLine) : 0;
    return {{QStringLiteral("first"), plan.place.line}, {QStringLiteral("last"), last}};
}

} // namespace

namespace DebugFrames
{

QVariantMap Request(const QString& op, QVariantMap request)
{
    request.insert(QStringLiteral("t"), QStringLiteral("debug"));
    request.insert(QStringLiteral("op"), op);
    return request;
}

int StopOf(const QVariantMap& frame)
{
    return Number(frame, "stop");
}

int LineOf(const RpaProgram& program, const RpaDebugPlace& place)
{
    for (int line = 1; line <= program.originByLine.size(); ++line) {
        const RpaProgramOrigin origin = program.GetOrigin(line);
        const bool same = place.statementId.isEmpty() ? origin.line == place.line && place.line > 0
                                                      : origin.statementId == place.statementId;
        if (same && origin.processName == place.processName)
            return line;
    }
    return 0;
}

RpaDebugPlace PlaceOf(const RpaProgram& program, int line)
{
    const RpaProgramOrigin origin = program.GetOrigin(line);
    return {origin.processName, origin.statementId, origin.line};
}

QVariant StatementLines(const RpaProgram& program)
{
    if (!program.visual)
        return {};
    QHash<QString, int> first;
    QVariantList lines{0};
    for (int line = 1; line <= program.originByLine.size(); ++line) {
        const RpaProgramOrigin origin = program.GetOrigin(line);
        const QString key = origin.processName + QLatin1Char('\n') + origin.statementId;
        if (!origin.statementId.isEmpty() && !first.contains(key))
            first.insert(key, line);
        lines << (origin.statementId.isEmpty() ? 0 : first.value(key));
    }
    return lines;
}

QVariantList Points(const RpaProgram& program, const QVector<RpaBreakpoint>& breakpoints)
{
    QVariantList points;
    for (const RpaBreakpoint& point : breakpoints) {
        const int line = point.enabled ? LineOf(program, point.place) : 0;
        if (line == 0 || points.size() >= RpaDebugSession::breakpointsAtMost)
            continue;
        points << QVariantMap{{QStringLiteral("line"), line},
                              {QStringLiteral("condition"), point.condition.left(longestExpression)},
                              {QStringLiteral("hits"), qMax(0, point.hits)},
                              {QStringLiteral("rule"), RuleName(point.hitRule)},
                              {QStringLiteral("log"), point.logText.left(longestExpression)}};
    }
    return points;
}

QVariantMap Plan(const RpaProgram& program, const RpaRunPlan& plan)
{
    const int target = plan.kind == RpaRunKind::ToHere ? LineOf(program, plan.place) : 0;
    const QVariantMap part = PartOf(program, plan);
    if (target == 0 && part.isEmpty() && plan.given.isEmpty() && !plan.pauseAtFirst)
        return {};
    QVariantMap given;
    for (auto it = plan.given.begin(); it != plan.given.end(); ++it)
        given.insert(it.key(), it.value());
    return {{QStringLiteral("target"), target},
            {QStringLiteral("pause"), plan.pauseAtFirst},
            {QStringLiteral("part"), part},
            {QStringLiteral("given"), given}};
}

bool HasPlace(const RpaProgram& program, const RpaRunPlan& plan)
{
    // Statements of a part were looked for when it was translated.
    const bool needed =
        plan.kind == RpaRunKind::ToHere || (!program.visual && plan.kind != RpaRunKind::Whole);
    return !needed || LineOf(program, plan.place) > 0;
}

QVector<QPair<int, int>> ReadPlaced(const QVariantMap& frame, const RpaProgram& program)
{
    QVector<QPair<int, int>> placed;
    const QVariantList lines =
        frame.value(QStringLiteral("lines")).toList().mid(0, RpaDebugSession::breakpointsAtMost);
    for (const QVariant& pair : lines) {
        const int line = pair.toList().value(0).toInt();
        const int actual = pair.toList().value(1).toInt();
        if (line > 0 && line <= program.originByLine.size() && actual >= 0 &&
            actual <= program.originByLine.size())
            placed.append({line, actual});
    }
    return placed;
}

QString ErrorStopName(RpaErrorStop stop)
{
    if (stop == RpaErrorStop::All)
        return QStringLiteral("all");
    return stop == RpaErrorStop::Unhandled ? QStringLiteral("unhandled") : QStringLiteral("none");
}

QString StepName(RpaDebugStep step)
{
    switch (step) {
    case RpaDebugStep::Into:
        return QStringLiteral("into");
    case RpaDebugStep::Over:
        return QStringLiteral("over");
    case RpaDebugStep::Out:
        return QStringLiteral("out");
    case RpaDebugStep::Continue:
        break;
    }
    return QStringLiteral("continue");
}

bool ReadPause(const QVariantMap& frame, const RpaProgram& program, RpaPause& pause)
{
    static const QHash<QString, RpaPauseReason> reasons{
        {QStringLiteral("breakpoint"), RpaPauseReason::Breakpoint},
        {QStringLiteral("step"), RpaPauseReason::Step},
        {QStringLiteral("pause"), RpaPauseReason::Pause},
        {QStringLiteral("target"), RpaPauseReason::Target},
        {QStringLiteral("error"), RpaPauseReason::Error}};
    const auto reason = reasons.constFind(Text(frame, "reason", longestName));
    pause.number = StopOf(frame);
    if (pause.number == 0 || reason == reasons.constEnd())
        return false;
    pause.reason = *reason;
    pause.note = Text(frame, "note", longestText);
    pause.stack = ReadStack(frame.value(QStringLiteral("stack")), program);
    // What calls the first process of a visual app is no statement, see ReadStack().
    pause.depth = qMax(0, Number(frame, "depth") - (program.visual ? 1 : 0));
    const QVariantMap error = frame.value(QStringLiteral("error")).toMap();
    pause.errorType = Text(error, "type", longestName);
    pause.errorText = Text(error, "text", longestText);
    pause.errorTrace = Text(error, "trace", longestText);
    return true;
}

QVector<RpaDebugValue> ReadValues(const QVariant& list)
{
    QVector<RpaDebugValue> values;
    const QVariantList entries = list.toList().mid(0, RpaDebugSession::entriesPerPage);
    for (const QVariant& entry : entries)
        values.append(ReadValue(entry.toMap()));
    return values;
}

RpaDebugAnswer ReadAnswer(const QVariantMap& frame)
{
    RpaDebugAnswer answer;
    answer.request = Number(frame, "id");
    answer.ok = Flag(frame, "ok");
    answer.error = Text(frame, "error", longestText);
    answer.total = Number(frame, "total");
    answer.values = ReadValues(frame.value(QStringLiteral("values")));
    return answer;
}

} // namespace DebugFrames
