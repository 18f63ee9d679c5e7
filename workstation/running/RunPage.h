// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "AppRunner.h"

#include <RpaServiceClient/releases/VersionServiceReleasedApp.h>
#include <WbBaseUI/WbBaseWidget.h>

#include <memory>

class IAppLogWidget;
class IAppParamWidget;
class IAppTableWidget;
class IAppToolWidget;
class QSplitter;
class RequestStatusBaseWidget;
class RpaUIData;
class QToolButton;
class RunAside;
class RunNotice;
class VersionServiceClient;
class WbLabel;
class WbTabBar;

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

    // Stops what runs and lets the app go.
    void Close();

private:
    QWidget* CreateContent();
    QWidget* CreateAppSide(QWidget* parent);
    void Load();
    void ShowUIPage(int index);
    void SlotStarted();
    void SlotFailed(const QString& processName, const QString& error, const QString& trace);
    void SlotPackagesFailed(const QString& processName, const QString& reason);
    void RunAgain();
    void Report();
    void SlotEnded();

    const std::unique_ptr<VersionServiceClient> client;
    VersionServiceReleasedApp released;
    RpaAppDataPtr app;
    WbLabel* labelTitle = nullptr;
    WbLabel* labelVersion = nullptr;
    WbLabel* labelRun = nullptr;
    WbLabel* labelNoTools = nullptr;
    QSplitter* content = nullptr;
    WbTabBar* tabs = nullptr;
    IAppToolWidget* tools = nullptr;
    IAppParamWidget* params = nullptr;
    IAppTableWidget* table = nullptr;
    IAppLogWidget* log = nullptr;
    RunAside* aside = nullptr;
    RunNotice* notice = nullptr;
    QString failedProcess;
    QString problem; // what the notice says, and its details
    QString details;
    RequestStatusBaseWidget* status = nullptr;
    AppRunner* const runner;
    quint64 opened = 0;
};
