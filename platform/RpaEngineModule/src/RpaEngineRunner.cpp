// SPDX-License-Identifier: Apache-2.0

#include "RpaEngineRunner_p.h"
#include "run/RpaProcessTranslator_p.h"

#include <RpaEngineCore/IProcessLifeCycle.h>
#include <RpaEngineCore/IRpaDebugger.h>
#include <RpaEngineCore/RpaProcessLifeCycleManager.h>
#include <RpaEngineModule/IRunPreparation.h>
#include <RpaEngineModule/RpaDebugSession.h>
#include <RpaEngineModule/RpaProcessRelatedUIControler.h>
#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaProcess.h>
#include <RpaProcessData/RpaProcessPart.h>
#include <WbSystem/PythonInterpreter.h>

#include <QTimer>

namespace
{

void TellListeners(const std::function<void(IProcessLifeCycle*)>& call)
{
    RpaProcessLifeCycleManager::Instance()->ForEach(call);
}

QString TextOf(const QVariant& value)
{
    if (value.type() == QVariant::Bool)
        return value.toBool() ? QStringLiteral("是") : QStringLiteral("否");
    if (value.type() == QVariant::StringList || value.type() == QVariant::List)
        return value.toStringList().join(QStringLiteral("、"));
    return value.toString();
}

RpaRunStart StartOf(const RpaRunParts& parts, const QString& processName)
{
    RpaRunStart start{parts.appId, parts.environment, processName, {}};
    const IAppParamEngine* const params = parts.params.Get();
    const QStringList secrets = params ? params->GetSecretParamNames() : QStringList();
    for (const QString& name : params ? params->GetParamNames() : QStringList())
        start.parameters.append({name, TextOf(params->GetParam(name)), secrets.contains(name)});
    return start;
}

// Empty when the process has none of the planned statements.
RpaProgram TranslatePart(const ProcessDataManager& processes, const RpaProcess& process,
                         const RpaRunPlan& plan)
{
    if (plan.kind != RpaRunKind::FromHere && plan.kind != RpaRunKind::Only)
        return RpaProcessTranslator(processes).Translate(process.GetName());
    const QVector<RpaStatement> part = plan.kind == RpaRunKind::FromHere
                                           ? RpaProcessPart::FromHere(process, plan.place.statementId)
                                           : RpaProcessPart::Only(process, plan.statementIds);
    if (part.isEmpty())
        return {};
    ProcessDataManager copy;
    RpaProcessPart::CopyWithPart(processes, process.GetName(), part, copy);
    return RpaProcessTranslator(copy).Translate(process.GetName());
}
} // namespace

RpaEngineRunner::RpaEngineRunner(IRpaLogManager& logManager, IRpaDebugger& engineDebugger,
                                 RpaDebugSession& debugSession)
    : log(logManager), debugger(engineDebugger), session(debugSession)
{
}

RpaEngineRunner::~RpaEngineRunner() = default;

bool RpaEngineRunner::Execute(const ProcessDataManager* processes, const QString& processName, bool visual,
                              const RpaRunParts& parts)
{
    const RpaRunPlan plan = session.TakeNextRun();
    if (IsGivenUp(processName)) {
        givenUp.clear();
        log.Append(RpaLogLevel::Warning, QStringLiteral("流程“%1”已停止，没有运行").arg(processName));
        return true;
    }
    const QString unprepared = preparation ? preparation->GetRefusal() : QString();
    if (!unprepared.isEmpty())
        return Refuse(unprepared);
    if (run)
        return Refuse(QStringLiteral("流程“%1”正在运行，请先停止它").arg(runningProcess));
    const RpaProcess* process = processes ? processes->FindProcess(processName) : nullptr;
    if (!process)
        return Refuse(QStringLiteral("找不到流程“%1”").arg(processName));
    const QString demand = parts.params.Get() ? parts.params.Get()->DemandValues() : QString();
    if (!demand.isEmpty()) {
        log.Append(RpaLogLevel::Warning, QStringLiteral("流程“%1”没有运行：%2").arg(processName, demand));
        return true; // nothing failed: the run waits for what the user enters
    }
    program = visual ? TranslatePart(*processes, *process, plan) : RpaProcessTranslator::TakeText(*process);
    if ((visual && program.source.isEmpty()) || !session.Prepare(program, plan))
        return Refuse(QStringLiteral("找不到要运行的步骤"));
    program.packageFolders = parts.packageFolders;
    QString reason;
    run = TakeChild(&reason);
    if (!run)
        return Refuse(reason);

    runningProcess = processName;
    calls = std::make_unique<RpaRunCalls>(*run, parts);
    Wire();
    session.Attach(*run, program);
    TellStart(parts);
    run->Begin(program);
    return true;
}

bool RpaEngineRunner::Refuse(const QString& reason)
{
    log.Append(RpaLogLevel::Error, reason);
    return false;
}

std::unique_ptr<RpaRun> RpaEngineRunner::TakeChild(QString* reason)
{
    if (ready && ready->IsAlive())
        return std::move(ready);
    auto fresh = std::make_unique<RpaRun>();
    return fresh->Warm(PythonInterpreter::Find(), reason) ? std::move(fresh) : nullptr;
}

void RpaEngineRunner::KeepOneReady()
{
    if (ready || run)
        return;
    QString reason;
    ready = std::make_unique<RpaRun>();
    if (!ready->Warm(PythonInterpreter::Find(), &reason))
        ready.reset();
}

void RpaEngineRunner::Wire()
{
    connect(run.get(), &RpaRun::SigLog, this, [this](RpaLogLevel level, const QString& text, int line) {
        const RpaProgramOrigin origin = program.GetOrigin(line);
        log.Append(level, text, origin.statementId, origin.line);
    });
    connect(run.get(), &RpaRun::SigAt, this, &RpaEngineRunner::TellPosition);
    connect(run.get(), &RpaRun::SigSpans, this, [](const RpaRunSpans& spans) {
        TellListeners([&](IProcessLifeCycle* listener) { listener->RunSpans(spans); });
    });
    connect(run.get(), &RpaRun::SigCall, calls.get(), &RpaRunCalls::Take);
    connect(run.get(), &RpaRun::SigEnded, this, &RpaEngineRunner::TakeEnd);
}

void RpaEngineRunner::TellPosition(int line, qint64 time)
{
    const RpaProgramOrigin origin = program.GetOrigin(line);
    if (!origin.statementId.isEmpty())
        TellListeners([&](IProcessLifeCycle* listener) { listener->ApiExecute(origin.statementId); });
    if (origin.line == 0)
        return;
    RpaRunSpan position;
    position.start = time;
    position.place = origin.ToPlace();
    TellListeners([&](IProcessLifeCycle* listener) { listener->RunSpans({{position}, {}}); });
}

void RpaEngineRunner::TellStart(const RpaRunParts& parts)
{
    debugger.SigCheckNode({});
    const RpaRunStart start = StartOf(parts, runningProcess);
    TellListeners([&start](IProcessLifeCycle* listener) { listener->RunStarted(start); });
    log.Append(RpaLogLevel::Info, QStringLiteral("开始运行流程“%1”").arg(runningProcess));
    RpaProcessRelatedUIControler::Instance()->SetRunning(true);
    TellListeners([](IProcessLifeCycle* listener) { listener->EngineReady(); });
    TellListeners([&](IProcessLifeCycle* listener) { listener->AppLoaded(parts.appId); });
    TellListeners([this](IProcessLifeCycle* listener) { listener->ProcessStart(runningProcess); });
}

void RpaEngineRunner::SetWaiting(bool value)
{
    if (value == waits)
        return;
    waits = value;
    if (waits)
        givenUp.clear();
    else // whoever waited goes on before the event loop does, or never
        QTimer::singleShot(0, this, [this] {
            givenUp.clear();
            session.TakeNextRun();
        });
    RpaProcessRelatedUIControler::Instance()->SetRunning(waits || run);
    TellListeners([this](IProcessLifeCycle* listener) { listener->RunWaits(waits); });
}

bool RpaEngineRunner::Terminate(const QString& processName)
{
    if (waits && preparation) {
        givenUp = processName;
        log.Append(RpaLogLevel::Info, QStringLiteral("正在停止流程“%1”").arg(processName));
        preparation->Stop();
        return true;
    }
    if (!run || processName != runningProcess)
        return false;
    log.Append(RpaLogLevel::Info, QStringLiteral("正在停止流程“%1”").arg(runningProcess));
    run->Stop();
    return true;
}

void RpaEngineRunner::TakeEnd(const RpaRunOutcome& outcome)
{
    const QString processName = runningProcess;
    if (outcome.ok)
        log.Append(RpaLogLevel::Info, QStringLiteral("流程“%1”运行完成").arg(processName));
    else if (outcome.stopped)
        log.Append(RpaLogLevel::Warning, QStringLiteral("流程“%1”已停止").arg(processName));
    else
        TellFailure(outcome);

    // The run is on the stack of its own signal.
    calls.reset();
    session.Detach();
    run.release()->deleteLater();
    runningProcess.clear();
    RpaProcessRelatedUIControler::Instance()->SetRunning(waits);
    if (outcome.stopped)
        TellListeners([&](IProcessLifeCycle* listener) { listener->ProcessTerminate(processName); });
    TellListeners([&](IProcessLifeCycle* listener) { listener->ProcessFinish(processName); });
    TellListeners([](IProcessLifeCycle* listener) { listener->EngineRelease(); });
    QTimer::singleShot(0, this, &RpaEngineRunner::KeepOneReady);
}

void RpaEngineRunner::TellFailure(const RpaRunOutcome& outcome)
{
    const RpaProgramOrigin origin = program.GetOrigin(outcome.line);
    const QString where = origin.processName.isEmpty() ? runningProcess : origin.processName;
    QString text = QStringLiteral("流程“%1”运行失败：%2").arg(runningProcess, outcome.error);
    if (origin.statementId.isEmpty() && outcome.line > 0)
        text += QStringLiteral("（第 %1 行）").arg(outcome.line);
    log.Append(RpaLogLevel::Error, text, origin.statementId, origin.line);
    if (!outcome.trace.isEmpty())
        log.Append(RpaLogLevel::Debug, outcome.trace, origin.statementId, origin.line);
    TellListeners([&](IProcessLifeCycle* listener) { listener->RunFailed(outcome.failure); });
    TellListeners([&](IProcessLifeCycle* listener) {
        listener->ProcessFailed(runningProcess, outcome.error, outcome.trace);
    });
    TellPlace({where, origin.statementId, QStringLiteral("run-failed"), outcome.error,
               QStringLiteral("请检查此步骤的参数，运行日志中有详细信息"),
               origin.statementId.isEmpty() ? origin.line : 0});
}

// Without a place there is nothing to mark.
void RpaEngineRunner::TellPlace(const RpaCheckInfo& finding)
{
    if (!finding.statementId.isEmpty() || finding.line > 0)
        debugger.SigCheckNode({finding});
}

void RpaEngineRunner::Shutdown()
{
    ready.reset();
    calls.reset();
    session.Detach();
    run.reset();
    runningProcess.clear();
}
