// SPDX-License-Identifier: Apache-2.0

#include "AppRunner.h"

#include <RpaAppData/RpaAppExtendInfo.h>
#include <RpaCore/RpaAppKind.h>
#include <RpaEngineCore/IAppParamEngine.h>
#include <RpaEngineCore/IRpaTranslator.h>
#include <RpaEngineCore/RpaProcessLifeCycleManager.h>
#include <RpaEngineModule/RpaDebugSession.h>
#include <RpaEngineModule/RpaEngineModule.h>
#include <RpaPackage/PackageService.h>
#include <RpaPackage/RpaPackageModule.h>
#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaPackageInfo.h>

AppRunner::AppRunner(QObject* parent) : QObject(parent)
{
    RpaProcessLifeCycleManager::Instance()->AddLifeCycle(this);
    connect(RpaPackageModule::Instance()->GetBuiltIn(), &PackageService::SigInstallationEnded, this,
            &AppRunner::SlotInstallationEnded);
}

AppRunner::~AppRunner()
{
    RpaProcessLifeCycleManager::Instance()->RemoveLifeCycle(this);
    Leave();
}

void AppRunner::SetApp(const RpaAppDataPtr& newApp, IAppParamEngine* paramEngine,
                       IAppTableEngine* tableEngine, IBrowserEngine* browserEngine)
{
    Leave();
    app = newApp;
    params = paramEngine;
    table = tableEngine;
    browser = browserEngine;
    packagesInstalled = false;
}

void AppRunner::Run(const QString& processName)
{
    if (!app || IsRunning() || !waiting.isEmpty())
        return;
    // Before its packages: nobody waits for an installation to be told then what to enter.
    if (params && !params->DemandValues().isEmpty())
        return;
    waiting = processName;
    SetUpEngine(false);
    const bool visual = app->GetAppExtendInfo()->GetAppKind() == AppKindVisual;
    RpaEngineModule::Instance()->GetTranslator()->SetTranslateStatements(visual);
    RpaEngineModule::Instance()->GetTranslator()->SetReportStatements(false);
    InstallPackages();
}

void AppRunner::InstallPackages()
{
    IPackageService* const service = RpaPackageModule::Instance()->GetService();
    if (packagesInstalled || !service || app->GetPackageInfo()->IsEmpty()) {
        SlotPackagesReady();
        return;
    }
    const QString packages = QString::fromUtf8(app->GetPackageInfo()->ToJson());
    connect(service, &IPackageService::SigInstallFinished, this, &AppRunner::SlotPackagesReady);
    packageProblem.clear();
    service->Reset(packages);
    service->Install(packages);
}

void AppRunner::SlotPackagesReady()
{
    if (IPackageService* service = RpaPackageModule::Instance()->GetService())
        disconnect(service, &IPackageService::SigInstallFinished, this, &AppRunner::SlotPackagesReady);
    const QString problem = std::exchange(packageProblem, QString());
    packagesInstalled = problem.isEmpty();
    const QString processName = std::exchange(waiting, QString());
    if (processName.isEmpty() || !app)
        return;
    if (!problem.isEmpty()) {
        emit SigPackagesFailed(processName, problem);
        return;
    }
    const bool visual = app->GetAppExtendInfo()->GetAppKind() == AppKindVisual;
    if (visual && !RpaEngineModule::Instance()->Check(processName))
        emit SigRefused(QStringLiteral("应用的流程有问题，无法运行，详细信息见运行日志"));
    else if (!Execute(processName))
        emit SigRefused(QStringLiteral("执行流程失败，原因见运行日志"));
}

// What an author is about to look into in her editor is none of a user's business.
bool AppRunner::Execute(const QString& processName)
{
    RpaRunPlan plan;
    plan.ignoresBreakpoints = true;
    RpaEngineModule::Instance()->GetDebugSession()->SetNextRun(plan);
    return RpaEngineModule::Instance()->Execute(processName);
}

// Whoever stopped the run knows why there are packages missing.
void AppRunner::SlotInstallationEnded(const QString& problem)
{
    if (!waiting.isEmpty() && !RpaPackageModule::Instance()->GetBuiltIn()->IsCut())
        packageProblem = problem;
}

void AppRunner::Stop(const QString& processName)
{
    RpaEngineModule::Instance()->Terminate(processName);
}

void AppRunner::Leave()
{
    if (!app)
        return;
    if (IPackageService* service = RpaPackageModule::Instance()->GetService()) {
        // What comes late is about this app, not about the next.
        disconnect(service, &IPackageService::SigInstallFinished, this, &AppRunner::SlotPackagesReady);
    }
    if (!waiting.isEmpty())
        Stop(std::exchange(waiting, QString()));
    if (IsRunning())
        Stop(running);
    SetUpEngine(true);
    app.reset();
    browser = nullptr;
    running.clear();
}

void AppRunner::SetUpEngine(bool clear)
{
    RpaEngineModule* const engine = RpaEngineModule::Instance();
    engine->SetBrowserEngine(clear ? nullptr : browser);
    engine->SetAppParamEngine(clear ? nullptr : params);
    engine->SetAppTableEngine(clear ? nullptr : table);
    engine->SetHtmlNodeManager(clear ? nullptr : app->GetHtmlNodeManager());
    engine->SetUiaNodeManager(clear ? nullptr : app->GetUiaNodeManager());
    engine->SetProcessDataManager(clear ? nullptr : app->GetProcessDataManager());
    engine->SetAppRunTimeInfo(clear ? nullptr : app->GetRunTimeInfo());
}

void AppRunner::ProcessStart(const QString& processName)
{
    if (app) {
        running = processName;
        emit SigStarted(processName);
    }
}

void AppRunner::ProcessFinish(const QString& processName)
{
    if (processName == running) {
        running.clear();
        emit SigEnded();
    }
}

void AppRunner::ProcessFailed(const QString& processName, const QString& error, const QString& trace)
{
    if (processName == running)
        emit SigFailed(processName, error, trace);
}
