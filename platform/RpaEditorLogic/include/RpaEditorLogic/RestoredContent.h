// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaAppData/RpaContentOrigin.h>

#include <QByteArray>
#include <QString>

// Unsaved work that is shown instead of a version's content.
struct RestoredContent
{
    QString versionId;       // the version it is shown as
    int baseRevision = 0;    // the only revision of it that a save may replace; 0: none at all
    QByteArray json;         // app data
    RpaContentOrigin origin; // for the app data it ends up in
};
