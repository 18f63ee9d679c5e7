// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "AppAudience_p.h"

#include <RpaAppData/RpaAppData.h>
#include <RpaServiceClient/versions/VersionServiceContent.h>

#include <QPointer>

// What one save carries, on which revision. Taken from its request when it is made.
struct SaveOrder
{
    QString appId;
    QString versionId; // empty: a new version
    VersionServiceContent content;
    int base = 0;
    AppAudience::Ticket ticket;
    QPointer<RpaAppData> source; // whose content it is; null: gone, or not known
    bool isChosen = false;       // the author picked the version by its name
};
