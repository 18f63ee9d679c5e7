// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "AppRecord.h"

#include <QObject>

#include <memory>

class AppBin;
class AppListController;
class AppListModel;
class AppListPage;
class MainWindow;
class SampleInstaller;
class Session;
class TransferController;
class WorkstationSettings;

// What is done with apps as a whole: the list of one's own, making, naming, exporting, deleting. Makes the page
// with the list, which the window owns.
class AppsFlow : public QObject
{
    Q_OBJECT

public:
    // openedFile: where is kept when each account opened which app. None of the others is owned.
    AppsFlow(const QString& openedFile, Session* session, WorkstationSettings* settings, MainWindow* window);
    ~AppsFlow() override;

    AppListPage* GetPage() const { return page; }
    AppListModel* GetModel() const { return model.get(); }

    // Shows the list as it is known.
    void Show();
    // Reads it again; RefreshAndSelect makes the app's card the current one.
    void Refresh();
    void RefreshAndSelect(const QString& appId);
    // The app is opened now.
    void NoteOpened(const AppRecord& app);

signals:
    // The user wants to work on the app.
    void SigOpen(const AppRecord& app);

private:
    void ConnectList();
    void ConnectOthers();
    void ConnectSession();
    void Fill();

    Session* const session;
    WorkstationSettings* const settings;
    MainWindow* const window;
    const std::unique_ptr<AppListModel> model;
    AppListPage* const page;
    const std::unique_ptr<AppListController> controller;
    const std::unique_ptr<AppBin> bin;
    const std::unique_ptr<TransferController> transfers;
    const std::unique_ptr<SampleInstaller> samples;
};
