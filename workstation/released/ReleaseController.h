// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "AppRecord.h"
#include "DateLanguage.h"

#include <RpaServiceClient/VersionServiceClient.h>
#include <RpaServiceClient/releases/ListReleasesRequest.h>

#include <QObject>

class ReleaseDialog;

// Works the releases of an app: what users have, and taking it back. Outlives its dialogs, so that whoever
// closed them hears all the same how it went.
class ReleaseController : public QObject
{
    Q_OBJECT

public:
    // Shows the releases of the app over the window.
    void Show(const AppRecord& app, DateLanguage language, QWidget* window);

signals:
    // Users have something else now.
    void SigChanged();

private:
    void Load(ReleaseDialog* dialog);
    // to: empty for none.
    void Ask(ReleaseDialog* dialog, int state, const VersionServiceRelease& present,
             const VersionServiceRelease& to);

    VersionServiceClient client;
};
