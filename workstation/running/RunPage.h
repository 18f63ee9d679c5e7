// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "AppRunner.h"
#include "ReportText.h"
#include "ui_RunPage.h"

#include <RpaServiceClient/releases/VersionServiceReleasedApp.h>
#include <WbBaseUI/WbBaseWidget.h>

#include <functional>
#include <memory>

class IAppParamWidget;
class IAppTableWidget;
class IAppToolWidget;
class RpaUIData;
class VersionServiceClient;

// A released app as its users meet it: its UI pages, whose tools run its processes, the log of the run and
// beside them the usage instructions and the browser.
class RunPage : public WbBaseWidget
{
    Q_OBJECT

public:
    explicit RunPage(QWidget* parent = nullptr);
    ~RunPage() override;

    // Reads the version from the service and shows it.
    void Open(const VersionServiceReleasedApp& app);

    // Shows this app data. False when it is not app data.
    bool ShowApp(const VersionServiceReleasedApp& app, const QByteArray& json);

    const VersionServiceReleasedApp& GetReleased() const { return released; }

    // Stops what runs and lets the app go.
    void Close();

    // Asked for what is kept of the last run of the app; answers later, with nothing when nothing is kept, and
    // not when the context is gone.
    using KeptRun = std::function<void(const QString& appId, QObject* context,
                                       const std::function<void(const ReportParts& parts)>& answer)>;
    void SetKeptRun(const KeptRun& value) { keptRun = value; }

private:
    void AddParts();
    void Connect();
    void Load();
    void ShowUIPage(int index);
    void SlotStarted();
    void SlotFailed(const QString& processName, const QString& error, const QString& trace);
    void SlotPackagesFailed(const QString& processName, const QString& reason);
    void RunAgain();
    void Report();
    void ShowReport(const ReportParts& kept);
    void SlotEnded();

    Ui::RunPage ui;
    const std::unique_ptr<VersionServiceClient> client;
    VersionServiceReleasedApp released;
    RpaAppDataPtr app;
    IAppToolWidget* tools = nullptr;
    IAppParamWidget* params = nullptr;
    IAppTableWidget* table = nullptr;
    QString failedProcess;
    QString problem; // what the notice says, and its details
    QString details;
    AppRunner* const runner;
    KeptRun keptRun;
    quint64 opened = 0;
};
