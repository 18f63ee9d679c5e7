// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaAppData/RpaAppData.h>
#include <RpaEngineCore/IProcessLifeCycle.h>

#include <QObject>

class IAppParamEngine;
class IAppTableEngine;
class IBrowserEngine;

// Runs the processes of a released app in the engine: its packages first, then the process.
class AppRunner : public QObject, public IProcessLifeCycle
{
    Q_OBJECT

public:
    explicit AppRunner(QObject* parent = nullptr);
    ~AppRunner() override;

    // What is run from now on. The engines belong to the page: those of parameters and table outlive the
    // runner, that of the browser the app, until Leave(); it is null for an app without a browser.
    void SetApp(const RpaAppDataPtr& app, IAppParamEngine* params, IAppTableEngine* table,
                IBrowserEngine* browser);

    void Run(const QString& processName);
    void Stop(const QString& processName);

    // Stops what runs, takes everything out of the engine.
    void Leave();

    bool IsRunning() const { return !running.isEmpty(); }

    void ProcessStart(const QString& processName) override;
    void ProcessFinish(const QString& processName) override;
    void ProcessTerminate(const QString& processName) override { ProcessFinish(processName); }
    void ProcessFailed(const QString& processName, const QString& error, const QString& trace) override;

signals:
    void SigStarted(const QString& processName);
    void SigEnded();
    // The run did not start, with the reason in the user's words.
    void SigRefused(const QString& reason);
    // It did not start because its packages cannot be installed; Run() tries again.
    void SigPackagesFailed(const QString& processName, const QString& reason);
    // It failed. trace: for those who know Python.
    void SigFailed(const QString& processName, const QString& error, const QString& trace);

private:
    void SetUpEngine(bool clear);
    void InstallPackages();
    void SlotPackagesReady();
    void SlotInstallationEnded(const QString& problem);
    static bool Execute(const QString& processName);

    RpaAppDataPtr app;
    IAppParamEngine* params = nullptr;
    IAppTableEngine* table = nullptr;
    IBrowserEngine* browser = nullptr;
    QString waiting; // process that waits for its packages
    QString running;
    QString packageProblem; // of the installation that is waited for
    bool packagesInstalled = false;
};
