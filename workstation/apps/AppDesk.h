#pragma once

#include "AppRecord.h"

#include <QObject>

#include <memory>

class AppListModel;
class AppListPage;
class AppNameDialog;
class VersionServiceClient;
struct VersionServiceApp;

// Works the list of apps: reads it from the service, makes and renames apps.
class AppDesk : public QObject
{
    Q_OBJECT

public:
    // Neither is owned.
    AppDesk(AppListModel* model, AppListPage* page, QObject* parent = nullptr);
    ~AppDesk() override;

    void Refresh();

    // Makes the app's card the current one once the list is there.
    void RefreshAndSelect(const QString& appId);

    // Takes the list of the former account away.
    void Forget();

    // Each asks for a name in a modal dialog.
    void Create(int kind);
    void Rename(const AppRecord& app);

private:
    static void Ask(AppNameDialog* dialog);
    void ShowOutcome(AppNameDialog* dialog, bool success, const QString& problem,
                     const VersionServiceApp& app);

    AppListModel* const model;
    AppListPage* const page;
    const std::unique_ptr<VersionServiceClient> client;
    QString selectNext;
    quint64 lastRefresh = 0;
};
