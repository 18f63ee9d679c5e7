// SPDX-License-Identifier: Apache-2.0

#include "RpaDebugSession_p.h"

RpaDebugSession::RpaDebugSession(QObject* parent) : QObject(parent), d(std::make_unique<Private>())
{
    qRegisterMetaType<RpaPause>();
    qRegisterMetaType<RpaDebugAnswer>();
    qRegisterMetaType<QVector<RpaDebugValue>>();
}

RpaDebugSession::~RpaDebugSession() = default;

RpaDebugSession::State RpaDebugSession::GetState() const
{
    return d->state;
}

RpaPause RpaDebugSession::GetPause() const
{
    return d->pause;
}

void RpaDebugSession::SetBreakpoints(const QVector<RpaBreakpoint>& breakpoints)
{
    d->breakpoints = breakpoints;
    if (!d->current.ignoresBreakpoints)
        SendPoints();
}

void RpaDebugSession::SetErrorStop(RpaErrorStop stop)
{
    d->errorStop = stop;
    SendSettings();
}

void RpaDebugSession::SetSlowMotion(int milliseconds)
{
    d->slowMs = qBound(0, milliseconds, slowestMs);
    SendSettings();
}

void RpaDebugSession::SetWatches(const QStringList& expressions)
{
    d->watches = expressions.mid(0, entriesPerPage);
    SendSettings();
}

void RpaDebugSession::SendPoints()
{
    const QVariantList points = d->run ? d->Points() : QVariantList();
    // A run that nobody debugs is not told that there is nothing to do.
    if (d->known || !points.isEmpty())
        d->Send(DebugFrames::Request(QStringLiteral("points"), {{QStringLiteral("points"), points}}));
}

void RpaDebugSession::SendSettings()
{
    if (d->known || d->HasSettings())
        d->Send(DebugFrames::Request(QStringLiteral("settings"), d->Settings()));
}

void RpaDebugSession::SetNextRun(const RpaRunPlan& plan)
{
    d->plan = plan;
}

RpaRunPlan RpaDebugSession::TakeNextRun()
{
    return std::exchange(d->plan, RpaRunPlan());
}

bool RpaDebugSession::Pause()
{
    if (d->state != State::Running)
        return false;
    d->Send(DebugFrames::Request(QStringLiteral("pause")));
    return true;
}

bool RpaDebugSession::Resume(RpaDebugStep step)
{
    if (d->state != State::Paused)
        return false;
    GoOn({{QStringLiteral("step"), DebugFrames::StepName(step)}});
    return true;
}

bool RpaDebugSession::RunTo(const RpaDebugPlace& place)
{
    const int line = d->state == State::Paused ? DebugFrames::LineOf(d->program, place) : 0;
    if (line == 0)
        return false;
    GoOn({{QStringLiteral("target"), line}});
    return true;
}

void RpaDebugSession::GoOn(QVariantMap request)
{
    request = DebugFrames::Request(QStringLiteral("resume"), request);
    request.insert(QStringLiteral("stop"), d->pause.number);
    d->state = State::Running;
    d->pause = RpaPause();
    d->open.clear();
    d->Send(request);
    emit SigResumed();
}

bool RpaDebugSession::Prepare(RpaProgram& program, const RpaRunPlan& plan)
{
    if (!DebugFrames::HasPlace(program, plan))
        return false;
    d->current = plan;
    d->program = program;
    QVariantMap setup = DebugFrames::Plan(program, plan);
    const QVariantList points = d->Points();
    d->known = !setup.isEmpty() || !points.isEmpty() || d->HasSettings();
    if (!d->known)
        return true;
    const QVariantMap settings = d->Settings();
    for (auto it = settings.begin(); it != settings.end(); ++it)
        setup.insert(it.key(), it.value());
    setup.insert(QStringLiteral("places"), DebugFrames::StatementLines(program));
    setup.insert(QStringLiteral("points"), points);
    program.debug = setup;
    return true;
}

void RpaDebugSession::Attach(RpaRun& run, const RpaProgram& program)
{
    d->run = &run;
    d->program = program;
    d->state = State::Running;
    d->pause = RpaPause();
    d->newestStop = 0;
    connect(&run, &RpaRun::SigDebug, this, &RpaDebugSession::Take);
    connect(&run, &RpaRun::SigLogPoint, this, [this](const QString& text, int line) {
        emit SigLogPoint(DebugFrames::PlaceOf(d->program, line), text);
    });
    emit SigStarted();
}

void RpaDebugSession::Detach()
{
    if (d->state == State::Idle)
        return;
    if (d->run)
        d->run->disconnect(this);
    d->run = nullptr;
    d->state = State::Idle;
    d->pause = RpaPause();
    d->open.clear();
    d->known = false;
    d->current = RpaRunPlan();
    emit SigEnded();
}

void RpaDebugSession::Take(const QVariantMap& frame)
{
    const QString event = frame.value(QStringLiteral("event")).toString();
    if (!d->known) // a program that plays the debugger
        return;
    if (event == QLatin1String("paused")) {
        TakePause(frame);
        return;
    }
    if (event == QLatin1String("placed")) {
        const QVector<QPair<int, int>> placed = DebugFrames::ReadPlaced(frame, d->program);
        for (const auto& [line, actual] : placed)
            emit SigPlaced(line, actual);
        return;
    }
    // Everything else belongs to a stop, and to an earlier one nobody listens any more.
    if (d->state != State::Paused || DebugFrames::StopOf(frame) != d->pause.number)
        return;
    if (event == QLatin1String("answer")) {
        TakeAnswer(frame);
    } else if (event == QLatin1String("watches")) {
        emit SigWatches(DebugFrames::ReadValues(frame.value(QStringLiteral("values"))));
    } else if (event == QLatin1String("resumed")) { // nobody asked for it: the run is being stopped
        d->state = State::Running;
        d->pause = RpaPause();
        d->open.clear();
        emit SigResumed();
    }
}

void RpaDebugSession::TakePause(const QVariantMap& frame)
{
    RpaPause pause;
    if (d->state != State::Running || !DebugFrames::ReadPause(frame, d->program, pause) ||
        pause.number <= d->newestStop)
        return;
    d->newestStop = pause.number;
    d->pause = pause;
    d->state = State::Paused;
    emit SigPaused(pause);
}

void RpaDebugSession::TakeAnswer(const QVariantMap& frame)
{
    const RpaDebugAnswer answer = DebugFrames::ReadAnswer(frame);
    if (d->open.remove(answer.request))
        emit SigAnswer(answer);
}
