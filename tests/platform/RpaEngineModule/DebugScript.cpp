// SPDX-License-Identifier: Apache-2.0

#include "DebugScript.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <functional>

namespace
{

constexpr int patienceMs = 20000;

// A real event loop; a timer of its own ends it when nothing happens.
bool WaitFor(const std::function<bool()>& condition)
{
    QElapsedTimer clock;
    clock.start();
    QTimer tick;
    tick.start(200);
    while (!condition() && clock.elapsed() < patienceMs)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    return condition();
}

const char* const reasonNames[] = {"breakpoint", "step", "pause", "target", "error"};

} // namespace

DebugScript::DebugScript()
{
    AddCommands();
    QObject::connect(Session(), &RpaDebugSession::SigPaused, &processes, [this](const RpaPause& given) {
        pause = given;
        ++stops;
    });
    QObject::connect(Session(), &RpaDebugSession::SigEnded, &processes, [this] { ++ends; });
    QObject::connect(Session(), &RpaDebugSession::SigAnswer, &processes,
                     [this](const RpaDebugAnswer& given) { answer = given; });
    QObject::connect(Session(), &RpaDebugSession::SigWatches, &processes,
                     [this](const QVector<RpaDebugValue>& given) { watched = given; });
    QObject::connect(Session(), &RpaDebugSession::SigLogPoint, &processes,
                     [this](const RpaDebugPlace& place, const QString& text) {
                         points << QStringLiteral("%1: %2").arg(place.line).arg(text);
                     });
}

DebugScript::~DebugScript()
{
    if (Session()->GetState() != RpaDebugSession::State::Idle)
        Stop({});
    Session()->disconnect(&processes);
    Session()->SetBreakpoints({});
    Session()->SetErrorStop(RpaErrorStop::Never);
    Session()->SetSlowMotion(0);
    Session()->SetWatches({});
    Session()->SetNextRun({});
}

void DebugScript::SetText(const QString& program)
{
    visual = false;
    processes.FindProcess(QStringLiteral("主流程"))->SetProgramText(program);
}

void DebugScript::SetProcess(const QString& name, const QVector<RpaStatement>& statements)
{
    visual = true;
    RpaProcess* const known = processes.FindProcess(name);
    (known ? known : processes.AddProcess(name))->SetStatements(statements);
}

QStringList DebugScript::Do(const QStringList& given)
{
    transcript.clear();
    for (const QString& line : given) {
        const QString name = line.section(QLatin1Char(' '), 0, 0);
        const Command command = commands.value(name);
        if (command)
            (this->*command)(line.section(QLatin1Char(' '), 1));
        else
            transcript << QStringLiteral("unknown command ") + name;
    }
    return transcript;
}

void DebugScript::AddCommands()
{
    commands = {{QStringLiteral("break"), &DebugScript::Break},
                {QStringLiteral("clear"), &DebugScript::Clear},
                {QStringLiteral("errors"), &DebugScript::Errors},
                {QStringLiteral("slow"), &DebugScript::Slow},
                {QStringLiteral("watch"), &DebugScript::Watch},
                {QStringLiteral("plan"), &DebugScript::Plan},
                {QStringLiteral("given"), &DebugScript::Given},
                {QStringLiteral("begin"), &DebugScript::Begin},
                {QStringLiteral("run"), &DebugScript::Run},
                {QStringLiteral("go"), &DebugScript::Go},
                {QStringLiteral("to"), &DebugScript::To},
                {QStringLiteral("until"), &DebugScript::Until},
                {QStringLiteral("pause"), &DebugScript::AskToPause},
                {QStringLiteral("wait"), &DebugScript::Wait},
                {QStringLiteral("stop"), &DebugScript::Stop},
                {QStringLiteral("eval"), &DebugScript::Evaluate},
                {QStringLiteral("at"), &DebugScript::EvaluateAbove},
                {QStringLiteral("scopes"), &DebugScript::Scopes},
                {QStringLiteral("vars"), &DebugScript::List},
                {QStringLiteral("open"), &DebugScript::Open},
                {QStringLiteral("set"), &DebugScript::Set},
                {QStringLiteral("stack"), &DebugScript::Stack},
                {QStringLiteral("log"), &DebugScript::Log}};
    commands.insert(QStringLiteral("continue"), &DebugScript::Continue);
    commands.insert(QStringLiteral("into"), &DebugScript::Into);
    commands.insert(QStringLiteral("over"), &DebugScript::Over);
    commands.insert(QStringLiteral("out"), &DebugScript::Out);
}

RpaDebugPlace DebugScript::PlaceOf(const QString& text) const
{
    const QString own = QStringLiteral("主流程");
    const QString name = text.contains(QLatin1Char(':')) ? text.section(QLatin1Char(':'), 0, 0) : own;
    RpaDebugPlace place{name, {}, text.section(QLatin1Char(':'), -1).toInt()};
    int number = 0;
    if (visual)
        processes.FindProcess(name)->ForEach([&](const RpaStatementNode& node) {
            if (++number == place.line)
                place.statementId = node.GetId();
        });
    return place;
}

QString DebugScript::TextOf(const RpaDebugFrame& frame)
{
    if (!frame.place.statementId.isEmpty())
        return QStringLiteral("%1#%2").arg(frame.place.processName).arg(frame.place.line);
    const QString line = QString::number(frame.place.line);
    return frame.functionName == QStringLiteral("<module>") ? line
                                                            : frame.functionName + QLatin1Char(':') + line;
}

void DebugScript::Begin(const QString&)
{
    told = stops;
    ends = 0;
    Session()->SetNextRun(plan);
    plan = {};
    Engine()->GetTranslator()->SetTranslateStatements(visual);
    if (!Engine()->Execute(QStringLiteral("主流程")))
        transcript << QStringLiteral("not started");
    logSeen = 0;
    Source()->Initialize();
}

void DebugScript::Run(const QString&)
{
    Begin({});
    WaitForStop();
}

void DebugScript::Go(const QString&)
{
    if (!Session()->Resume(RpaDebugStep::Continue))
        transcript << QStringLiteral("not paused");
}

void DebugScript::Continue(const QString&)
{
    Resume(RpaDebugStep::Continue);
}

void DebugScript::Into(const QString&)
{
    Resume(RpaDebugStep::Into);
}

void DebugScript::Over(const QString&)
{
    Resume(RpaDebugStep::Over);
}

void DebugScript::Out(const QString&)
{
    Resume(RpaDebugStep::Out);
}

void DebugScript::Resume(RpaDebugStep step)
{
    if (Session()->Resume(step))
        WaitForStop();
    else
        transcript << QStringLiteral("not paused");
}

void DebugScript::To(const QString& rest)
{
    if (Session()->RunTo(PlaceOf(rest)))
        WaitForStop();
    else
        transcript << QStringLiteral("no such place");
}

void DebugScript::Until(const QString& rest)
{
    if (!WaitFor([&] { return LogHas(rest); }))
        transcript << QStringLiteral("never logged ") + rest;
}

void DebugScript::AskToPause(const QString&)
{
    if (Session()->Pause())
        WaitForStop();
    else
        transcript << QStringLiteral("not running");
}

void DebugScript::Wait(const QString&)
{
    WaitForStop();
}

void DebugScript::WaitForStop()
{
    if (!WaitFor([this] { return ends > 0 || stops > told; })) {
        transcript << QStringLiteral("nothing happened");
        return;
    }
    if (stops == told) {
        const bool failed = LogHas(QStringLiteral("运行失败"));
        const bool ok = LogHas(QStringLiteral("运行完成"));
        transcript << (ok       ? QStringLiteral("end")
                       : failed ? QStringLiteral("failed")
                                : QStringLiteral("stopped"));
        return;
    }
    told = stops;
    shown.clear();
    QString text = QLatin1String(reasonNames[static_cast<int>(pause.reason)]) + QLatin1Char(' ') +
                   (pause.stack.isEmpty() ? QStringLiteral("nowhere") : TextOf(pause.stack.first()));
    if (pause.reason == RpaPauseReason::Error)
        text += QLatin1Char(' ') + pause.errorType;
    transcript << (pause.note.isEmpty() ? text : text + QLatin1Char(' ') + pause.note);
}

void DebugScript::Stop(const QString&)
{
    Engine()->Terminate(QStringLiteral("主流程"));
    if (!WaitFor([this] { return ends > 0; }))
        transcript << QStringLiteral("never ended");
    else
        transcript << (LogHas(QStringLiteral("已停止")) ? QStringLiteral("stopped")
                                                        : QStringLiteral("ended"));
}

bool DebugScript::WaitForAnswer(int request)
{
    const bool came = request > 0 && WaitFor([&] { return answer.request == request || ends > 0; });
    if (came && answer.request == request && answer.ok)
        return true;
    transcript << (came && answer.request == request ? QStringLiteral("! ") + answer.error
                                                     : QStringLiteral("no answer"));
    return false;
}
