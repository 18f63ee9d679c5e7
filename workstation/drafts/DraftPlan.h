// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaDrafts/RpaDraft.h>
#include <RpaServiceClient/versions/VersionServiceVersion.h>

#include <QString>
#include <QVector>

// How a draft stands to the versions that the server has, and where it goes back to.
struct DraftPlan
{
    enum class Base
    {
        Current,  // the version is as it was when the work began, or as the work itself was saved
        Newer,    // somebody saved into it since
        Released, // it is no develop version any more
        Gone,     // it was deleted
        None,     // there was none yet
    };

    // The work is already on the server: the confirmation was lost, not the save.
    bool isSaved = false;
    Base base = Base::Current;
    QString versionName;  // of the version it is based on; empty when that is not listed
    int baseRevision = 0; // of that version, which the work goes on from
    int revision = 0;     // of that version now
    QString savedBy;      // who saved that version last, an account id

    // The version it is restored as; empty: the start of an app that has none to open.
    QString targetId;
    // The only revision of the target that a save may replace; 0: none.
    int targetRevision = 0;

    // Whether it can only be saved as a new version, beside others.
    bool NeedsNewVersion() const { return !targetId.isEmpty() && base != Base::Current; }

    static DraftPlan For(const RpaDraft& draft, const QVector<VersionServiceVersion>& versions);
};
