// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "AppRecord.h"
#include "DateLanguage.h"
#include "RowsDialog.h"

#include <RpaServiceClient/releases/ListReleasesRequest.h>

// The online and the gray versions of an app, which of them users have, and the way to take that back. It
// shows and announces; what happens is the owner's business.
class ReleaseDialog : public RowsDialog
{
    Q_OBJECT

public:
    ReleaseDialog(const AppRecord& app, DateLanguage language, QWidget* parent);

    const AppRecord& GetApp() const { return app; }

    void ShowReleases(const QVector<VersionServiceRelease>& releases);
    void ShowProblem(const QString& problem);

signals:
    // present: what users have; to: what they shall have. Either without an id: none.
    void SigTakeBack(int state, const VersionServiceRelease& present, const VersionServiceRelease& to);

private:
    void AddSection(int state, const QVector<VersionServiceRelease>& releases);
    void AddRowOf(const VersionServiceRelease& release, const VersionServiceRelease& present);

    const AppRecord app;
    const DateLanguage dateLanguage;
};
