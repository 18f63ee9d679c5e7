// SPDX-License-Identifier: Apache-2.0

#include "RunRecorder_p.h"

#include <RpaEngineCore/RpaProcessLifeCycleManager.h>

#include <algorithm>
#include <chrono>

namespace
{
using namespace std::chrono_literals;

constexpr std::chrono::milliseconds spanPause = 500ms;
constexpr int spansAtOnce = 1000;
constexpr int longestValue = 1000;
constexpr int longestTrace = 64 * 1024;

QVector<RpaRunValue> ValuesOf(const RpaRunStart& start)
{
    QVector<RpaRunValue> values;
    for (const RpaRunParameter& parameter : start.parameters)
        values.append(
            {parameter.name, parameter.isSecret ? SecretStrike::Mask() : parameter.text.left(longestValue)});
    return values;
}
} // namespace

RunRecorder::RunRecorder(QObject* parent) : QObject(parent)
{
    RpaProcessLifeCycleManager::Instance()->AddLifeCycle(this);
    pause.setSingleShot(true);
    pause.setInterval(spanPause);
    connect(&pause, &QTimer::timeout, this, &RunRecorder::HandSpansOn);
}

RunRecorder::~RunRecorder()
{
    RpaProcessLifeCycleManager::Instance()->RemoveLifeCycle(this);
}

void RunRecorder::Follow(IRpaLogDataSource* source, IRpaDebugger* debugger)
{
    log = source;
    if (log) {
        connect(log, &IRpaLogDataSource::SigLinesAdded, this, &RunRecorder::TakeLines);
        // Its numbers begin anew.
        connect(log, &IRpaLogDataSource::SigInitialized, this, [this] { taken = 0; });
    }
    if (debugger)
        connect(debugger, &IRpaDebugger::SigCheckNode, this, &RunRecorder::TakeFindings);
}

void RunRecorder::RunStarted(const RpaRunStart& start)
{
    isRunning = keeps;
    if (!isRunning)
        return;
    record = context ? context(start.appId) : RpaRunRecord();
    record.appId = start.appId;
    record.processName = start.processName;
    record.origin = start.environment == QLatin1String("develop") ? RpaRunOrigin::Editor : RpaRunOrigin::Page;
    record.parameters = ValuesOf(start);
    record.started = QDateTime::currentDateTimeUtc();
    strike = SecretStrike(start.parameters);
    taken = LastNumber();
    spans = {};
    clock.start();
    emit SigBegan(record);
}

qint64 RunRecorder::LastNumber() const
{
    const QVector<RpaLogLine> lines = log ? log->GetLines() : QVector<RpaLogLine>();
    return lines.isEmpty() ? 0 : lines.constLast().number;
}

// Lines come several at once; those of before the run, or taken already, are passed over.
void RunRecorder::TakeLines(const QVector<RpaLogLine>& lines)
{
    if (!isRunning || lines.isEmpty() || lines.constLast().number <= taken)
        return;
    QVector<RpaLogLine> news;
    for (const RpaLogLine& line : lines) {
        if (line.number <= taken)
            continue;
        record.missingLines += line.number - taken - 1;
        taken = line.number;
        news.append(line);
        news.last().text = strike.Apply(line.text);
    }
    emit SigLines(news);
}

void RunRecorder::TakeFindings(const QList<RpaCheckInfo>& findings)
{
    if (!isRunning || findings.isEmpty() || findings.first().rule != QLatin1String("run-failed"))
        return;
    record.failedProcess = findings.first().processName;
    record.failedStatement = findings.first().statementId;
    record.failedLine = findings.first().line;
}

void RunRecorder::RunSpans(const RpaRunSpans& news)
{
    if (!isRunning)
        return;
    for (RpaRunSpan span : news.spans) {
        for (QString* text : {&span.input, &span.result, &span.error, &span.place.title})
            *text = strike.ApplyCut(*text);
        spans.spans.append(span);
    }
    for (RpaRunSpanSum sum : news.sums) {
        sum.place.title = strike.ApplyCut(sum.place.title);
        spans.sums.append(sum);
    }
    if (spans.spans.size() + spans.sums.size() >= spansAtOnce)
        HandSpansOn();
    else if (!pause.isActive())
        pause.start();
}

void RunRecorder::HandSpansOn()
{
    pause.stop();
    if (isRunning && !spans.IsEmpty())
        emit SigSpans(spans);
    spans = {};
}

void RunRecorder::RunFailed(const RpaRunFailure& told)
{
    if (!isRunning)
        return;
    RpaRunFailure failure = told;
    for (RpaRunFrame& frame : failure.stack)
        frame.place.title = strike.ApplyCut(frame.place.title);
    for (RpaRunScope& scope : failure.scopes)
        for (RpaRunVariable& variable : scope.variables) {
            variable.name = strike.ApplyCut(variable.name);
            variable.text = strike.ApplyCut(variable.text);
        }
    emit SigFailure(failure);
}

void RunRecorder::ProcessFailed(const QString&, const QString& error, const QString& trace)
{
    record.result = RpaRunResult::Failed;
    record.reason = strike.Apply(error);
    record.trace = strike.Apply(trace).left(longestTrace);
}

void RunRecorder::ProcessTerminate(const QString&)
{
    record.result = RpaRunResult::Stopped;
}

void RunRecorder::ProcessFinish(const QString&)
{
    if (!isRunning)
        return;
    if (log)
        TakeLines(log->GetLines()); // the last of them are announced only later
    HandSpansOn();
    isRunning = false;
    record.duration = clock.elapsed();
    if (record.result == RpaRunResult::Running)
        record.result = RpaRunResult::Succeeded;
    emit SigEnded(record);
}
