// SPDX-License-Identifier: Apache-2.0

#include "RunState_p.h"

#include <RpaAppData/RpaAppRunTimeInfo.h>
#include <RpaEngineCore/RpaProcessLifeCycleManager.h>
#include <RpaEngineModule/RpaDebugSession.h>
#include <RpaEngineModule/RpaEngineModule.h>
#include <RpaEngineModule/RpaProcessRelatedUIControler.h>

RunState::RunState(QObject* parent) : QObject(parent)
{
    // What began before this editor was opened is somebody else's.
    runs = RpaProcessRelatedUIControler::Instance()->IsRunning();
    RpaProcessLifeCycleManager::Instance()->AddLifeCycle(this);
}

RunState::~RunState()
{
    RpaProcessLifeCycleManager::Instance()->RemoveLifeCycle(this);
}

void RunState::SetApp(const RpaAppDataPtr& appData)
{
    app = appData;
    emit SigChanged();
}

bool RunState::IsOwn() const
{
    if (!app || started.processName.isEmpty())
        return false;
    const RpaAppRunTimeInfo* const info = app->GetRunTimeInfo();
    return started.appId == info->GetAppId() && started.environment == info->GetEnvironment();
}

RunState::Phase RunState::GetPhase() const
{
    if (runs && !IsOwn())
        return Phase::Elsewhere;
    if (runs)
        return paused ? Phase::Paused : Phase::Running;
    if (waits)
        return waitingOf.isEmpty() ? Phase::Elsewhere : Phase::Waiting;
    return Phase::Idle;
}

QString RunState::GetProcess() const
{
    if (runs)
        return IsOwn() ? started.processName : QString();
    return waits ? waitingOf : QString();
}

void RunState::SetAsking(const QString& processName)
{
    asked = processName;
}

void RunState::RunWaits(bool value)
{
    waits = value;
    // A run that was there before this editor may have been such a wait.
    if (started.processName.isEmpty())
        runs = !waits && RpaProcessRelatedUIControler::Instance()->IsRunning();
    waitingOf = waits ? asked : QString();
    emit SigChanged();
}

void RunState::RunStarted(const RpaRunStart& start)
{
    const RpaDebugSession* const session = RpaEngineModule::Instance()->GetDebugSession();
    session->disconnect(this);
    connect(session, &RpaDebugSession::SigPaused, this, [this] { SetPaused(true); });
    connect(session, &RpaDebugSession::SigResumed, this, [this] { SetPaused(false); });
    started = start;
    runs = true;
    paused = false;
    emit SigStarted();
    emit SigChanged();
}

void RunState::ProcessFinish(const QString&)
{
    runs = false;
    paused = false;
    started = RpaRunStart();
    emit SigChanged();
}

void RunState::SetPaused(bool value)
{
    paused = value;
    emit SigChanged();
}
