// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "AppTabs.h"

#include <QObject>

#include <memory>

class ReleasedAppModel;
class ReleasedListPage;
class VersionServiceClient;

// Works one list of released apps: reads it from the service and redeems invitation codes.
class ReleasedListController : public QObject
{
    Q_OBJECT

public:
    // Neither is owned.
    ReleasedListController(AppTabs::Tab tab, ReleasedAppModel* model, ReleasedListPage* page,
                           QObject* parent = nullptr);
    ~ReleasedListController() override;

    void Refresh();
    void Redeem(const QString& code);

    // Takes the list of the former account away.
    void Forget();

private:
    const AppTabs::Tab tab;
    ReleasedAppModel* const model;
    ReleasedListPage* const page;
    const std::unique_ptr<VersionServiceClient> client;
    QString selectNext;
    quint64 lastRefresh = 0;
};
