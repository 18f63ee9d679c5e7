// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "AppPageHead.h"
#include "AppRecord.h"

#include <RpaServiceClient/releases/VersionServiceReleasedApp.h>

#include <QObject>

#include <memory>

class AppListModel;
class AppListPage;
class MainWindow;
class ReleaseController;
class ReleasedAppModel;
class ReleasedListController;
class ReleasedListPage;
class RunPage;
class Session;
class WorkstationSettings;

// What lies beyond the release: the lists of online and gray apps, running them, invitations, taking releases
// back. Makes the pages for it, which the window owns.
class ReleasedFlow : public QObject
{
    Q_OBJECT

public:
    // own: the author's apps, shown by the list. None is owned.
    ReleasedFlow(const Session* session, WorkstationSettings* settings, const AppListModel* own,
                 AppListPage* list, MainWindow* window);
    ~ReleasedFlow() override;

    RunPage* GetRunPage() const { return runPage; }

signals:
    // The user went back to the apps of their own.
    void SigOwn();

private:
    // A list of released apps, its model and who fills it.
    struct Shelf
    {
        std::unique_ptr<ReleasedAppModel> model;
        ReleasedListPage* page;
        std::unique_ptr<ReleasedListController> controller;
    };

    Shelf MakeShelf(AppPageHead::Tab tab);
    void ConnectShelf(const Shelf& shelf);
    void ConnectList();
    void ShowTab(int tab);
    void Run(const VersionServiceReleasedApp& app);
    void LeaveRun();
    void Refresh();
    void Forget();
    void ShowInvitations(const AppRecord& app);
    void SlotPublished(const QString& appId, int publishType, bool tookEffect);

    const Session* const session;
    WorkstationSettings* const settings;
    const AppListModel* const own;
    AppListPage* const list;
    MainWindow* const window;
    const Shelf online;
    const Shelf gray;
    RunPage* const runPage;
    QWidget* pageBeforeRun = nullptr;
    const std::unique_ptr<ReleaseController> releases;
};
