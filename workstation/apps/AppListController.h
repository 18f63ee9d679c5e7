// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "AppRecord.h"
#include "OpenedApps.h"

#include <RpaServiceClient/VersionServiceClient.h>

#include <QObject>

class AppListModel;
class AppListPage;
class AppNameDialog;
class QDialog;

// Works the list of apps: reads it from the service, makes and renames apps.
class AppListController : public QObject
{
    Q_OBJECT

public:
    // Neither model nor page is owned. openedFile: where is kept when each account opened which app.
    AppListController(AppListModel* model, AppListPage* page, const QString& openedFile = QString());

    void Refresh();

    // Makes the app's card the current one once the list is there.
    void RefreshAndSelect(const QString& appId);

    // Takes the list of the former account away.
    void Forget();

    // Who works from now on; their apps are sorted by when they opened them last.
    void SetAccount(const QString& pin) { account = pin; }
    void NoteOpened(const QString& appId);

    // Each asks for a name in a modal dialog.
    void Create(int kind);
    void Rename(const AppRecord& app);
    void EditTags(const AppRecord& app);

    void Copy(const AppRecord& app);

signals:
    // An app was made that its author now wants to see.
    void SigCreated(const AppRecord& app);

private:
    static void Ask(QDialog* dialog);
    void ShowOutcome(AppNameDialog* dialog, bool success, const QString& problem,
                     const VersionServiceApp& app);

    AppListModel* const model;
    AppListPage* const page;
    VersionServiceClient client;
    OpenedApps opened;
    QString account;
    AppRecord created; // by the dialog that is asking; without id: none
    QString selectNext;
    quint64 lastRefresh = 0;
};
