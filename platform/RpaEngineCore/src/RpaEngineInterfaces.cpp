// SPDX-License-Identifier: Apache-2.0

#include <RpaEngineCore/IAppParamEngine.h>
#include <RpaEngineCore/IAppTableEngine.h>
#include <RpaEngineCore/IProcessLifeCycle.h>
#include <RpaEngineCore/IRpaDebugger.h>
#include <RpaEngineCore/IRpaLogManager.h>
#include <RpaEngineCore/IRpaTranslator.h>

IAppParamEngine::~IAppParamEngine() = default;

QString IAppParamEngine::DemandValues()
{
    return {};
}

QStringList IAppParamEngine::GetSecretParamNames() const
{
    return QStringList();
}

IAppTableEngine::~IAppTableEngine() = default;

IRpaDebugger::IRpaDebugger(QObject* parent) : QObject(parent)
{
    qRegisterMetaType<QList<RpaCheckInfo>>();
}

IRpaDebugger::~IRpaDebugger() = default;

IRpaLogDataSource::IRpaLogDataSource(QObject* parent) : QObject(parent)
{
    qRegisterMetaType<QVector<RpaLogLine>>();
}

IRpaLogDataSource::~IRpaLogDataSource() = default;

IRpaLogManager::~IRpaLogManager() = default;

IRpaTranslator::~IRpaTranslator() = default;

IProcessLifeCycle::~IProcessLifeCycle() = default;

void IProcessLifeCycle::EngineReady() {}

void IProcessLifeCycle::EngineRelease() {}

void IProcessLifeCycle::AppLoaded(const QString&) {}

void IProcessLifeCycle::RunWaits(bool) {}

void IProcessLifeCycle::RunStarted(const RpaRunStart&) {}

void IProcessLifeCycle::ProcessStart(const QString&) {}

void IProcessLifeCycle::ProcessFinish(const QString&) {}

void IProcessLifeCycle::ProcessTerminate(const QString&) {}

void IProcessLifeCycle::ProcessFailed(const QString&, const QString&, const QString&) {}
void IProcessLifeCycle::RunSpans(const RpaRunSpans&) {}
void IProcessLifeCycle::RunFailed(const RpaRunFailure&) {}

void IProcessLifeCycle::ApiExecute(const QString&) {}
