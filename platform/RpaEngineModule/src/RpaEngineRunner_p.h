// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "run/RpaRunCalls_p.h"
#include "run/RpaRun_p.h"

#include <QObject>

#include <memory>

class IRpaDebugger;
class IRpaLogManager;
class IRunPreparation;
class ProcessDataManager;
class RpaDebugSession;
struct RpaCheckInfo;

// Runs one process at a time and tells everybody about it: log, life-cycle listeners, controlled widgets and,
// when a statement fails, the marks of the visual editor.
class RpaEngineRunner : public QObject
{
    Q_OBJECT

public:
    RpaEngineRunner(IRpaLogManager& log, IRpaDebugger& debugger, RpaDebugSession& session);
    ~RpaEngineRunner() override;

    // visual: statements to be translated; otherwise program text. False when the run could not be started;
    // why is in the log.
    bool Execute(const ProcessDataManager* processes, const QString& processName, bool visual,
                 const RpaRunParts& parts);

    void SetPreparation(IRunPreparation* value) { preparation = value; }
    void SetWaiting(bool value);
    // The run of this process was stopped while it waited, and is to be executed all the same.
    bool IsGivenUp(const QString& processName) const { return !givenUp.isEmpty() && givenUp == processName; }

    // False when the named process neither runs nor waits.
    bool Terminate(const QString& processName);

    // Ends the run and the child that is kept ready, without telling anybody; for the end of the program.
    void Shutdown();

private:
    bool Refuse(const QString& reason);
    std::unique_ptr<RpaRun> TakeChild(QString* reason);
    void KeepOneReady();
    void Wire();
    void TellPosition(int line, qint64 time);
    void TellStart(const RpaRunParts& parts);
    void TakeEnd(const RpaRunOutcome& outcome);
    void TellFailure(const RpaRunOutcome& outcome);
    void TellPlace(const RpaCheckInfo& finding);

    IRpaLogManager& log;
    IRpaDebugger& debugger;
    RpaDebugSession& session;
    QString runningProcess;
    RpaProgram program;
    IRunPreparation* preparation = nullptr;
    bool waits = false;
    QString givenUp;               // name of the process
    std::unique_ptr<RpaRun> ready; // its interpreter waits for a job
    std::unique_ptr<RpaRun> run;
    std::unique_ptr<RpaRunCalls> calls;
};
