// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "AppAudience_p.h"

#include <RpaAppData/RpaAppData.h>
#include <RpaServiceClient/ServiceRoutes.h>

#include <QPointer>

// What one save carries, on which revision, under which key. Taken from its request when it is made.
struct SaveOrder
{
    QString appId;
    QString versionId; // empty: a new version
    ServiceRoutes::VersionContent content;
    QByteArray key;
    int base = 0;
    AppAudience::Ticket ticket;
    QPointer<RpaAppData> source; // whose content it is; null: gone, or not known
    bool isChosen = false;       // the author picked the version by its name
};
