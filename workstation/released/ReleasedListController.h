// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "AppPageHead.h"

#include <RpaServiceClient/VersionServiceClient.h>

#include <QObject>

class ReleasedAppModel;
class ReleasedListPage;

// Works one list of released apps: reads it from the service and redeems invitation codes.
class ReleasedListController : public QObject
{
    Q_OBJECT

public:
    // Neither is owned.
    ReleasedListController(AppPageHead::Tab tab, ReleasedAppModel* model, ReleasedListPage* page);

    void Refresh();
    void Redeem(const QString& code);

    // Takes the list of the former account away.
    void Forget();

private:
    const AppPageHead::Tab tab;
    ReleasedAppModel* const model;
    ReleasedListPage* const page;
    VersionServiceClient client;
    QString selectNext;
    quint64 lastRefresh = 0;
};
