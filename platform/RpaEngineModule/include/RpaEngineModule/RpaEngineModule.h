// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaEngineModule/RpaEngineModuleExport.h>

#include <QString>
#include <QStringList>

#include <memory>

class IAppParamEngine;
class IAppTableEngine;
class IBrowserEngine;
class IRpaDebugger;
class IRpaLogManager;
class IRpaTranslator;
class IRunPreparation;
class ProcessDataManager;
class RpaAppRunTimeInfo;
class RpaDebugSession;
class RpaHtmlNodeManager;
class RpaUiaNodeManager;

// The process engine. What it is handed is not owned; null takes a part away. GUI thread only.
class RPAENGINEMODULE_EXPORT RpaEngineModule
{
public:
    // The one of the process.
    static RpaEngineModule* Instance();
    ~RpaEngineModule();

    // What runs that start from now on work with: the browser, the active page, the app.
    void SetBrowserEngine(IBrowserEngine* engine);
    void SetAppParamEngine(IAppParamEngine* engine);
    void SetAppTableEngine(IAppTableEngine* engine);
    void SetHtmlNodeManager(RpaHtmlNodeManager* manager);
    void SetUiaNodeManager(RpaUiaNodeManager* manager);
    void SetProcessDataManager(ProcessDataManager* manager);
    void SetAppRunTimeInfo(RpaAppRunTimeInfo* info);

    // Folders that runs started from now on search for Python modules before Python's own, in this order.
    void SetPackageFolders(const QStringList& folders);
    QStringList GetPackageFolders() const;

    // Asked before each run starts; null: nobody is.
    void SetPreparation(IRunPreparation* preparation);
    // A run that somebody asked for waits to be executed, or no longer. Meanwhile the controlled widgets are
    // disabled, and Terminate() gives the run up: should it be executed after all, nothing is started.
    void SetWaiting(bool waits);

    // Never null; they live as long as the engine.
    IRpaTranslator* GetTranslator() const;
    IRpaDebugger* GetEngineDebugger() const;
    IRpaLogManager* GetLogManager() const;
    // Breakpoints, pauses and variables of the runs, and which kind of run the next one is.
    RpaDebugSession* GetDebugSession() const;

    // Checks the named process and the processes it calls; false when there is any finding. Findings go to
    // IRpaDebugger::SigCheckNode and to the log.
    bool Check(const QString& processName);

    // Starts the named process; false when it could not be started (the reason is in the log). True as well
    // when it was given up while it waited, and when nothing is started because the parameters demand a value
    // (IAppParamEngine::DemandValues).
    bool Execute(const QString& processName);

    // Stops the named process; false when it neither runs nor waits.
    bool Terminate(const QString& processName);

private:
    RpaEngineModule();

    class Private;
    const std::unique_ptr<Private> d;
};
