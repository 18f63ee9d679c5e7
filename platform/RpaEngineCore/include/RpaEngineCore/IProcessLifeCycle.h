// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaEngineCore/RpaEngineCoreExport.h>
#include <RpaEngineCore/RpaRunFailure.h>
#include <RpaEngineCore/RpaRunSpan.h>
#include <RpaEngineCore/RpaRunStart.h>

#include <QString>

// Listener of a process's life in the engine. Every operation does nothing unless overridden. GUI thread.
class RPAENGINECORE_EXPORT IProcessLifeCycle
{
public:
    virtual ~IProcessLifeCycle();

    // The engine is there, or goes; an app was opened.
    virtual void EngineReady();
    virtual void EngineRelease();
    virtual void AppLoaded(const QString& appId);
    // A run that was asked for waits for what it needs (its packages), or no longer: then it starts, or was
    // given up.
    virtual void RunWaits(bool waits);
    // A process is about to start, with this.
    virtual void RunStarted(const RpaRunStart& start);
    virtual void ProcessStart(const QString& processName);
    virtual void ProcessFinish(const QString& processName);
    virtual void ProcessTerminate(const QString& processName);
    virtual void ApiExecute(const QString& statementId);
    // The run is about to end because it failed: why, in the user's words, and the program's own account.
    virtual void ProcessFailed(const QString& processName, const QString& error, const QString& trace);
    // What the run did outside of itself, and where it was seen in between; in its order, some times a second.
    virtual void RunSpans(const RpaRunSpans& spans);
    // Before ProcessFailed: the calls and variables of that moment; empty when the program could not tell them.
    virtual void RunFailed(const RpaRunFailure& failure);
};
