// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaAppData/RpaAppDataExport.h>

#include <QObject>

class RpaAppData;

// Hears of every app data of the process, whoever made it: for what keeps unsaved work safe without being
// handed each model. GUI thread only.
class RPAAPPDATA_EXPORT RpaAppDataNotify : public QObject
{
    Q_OBJECT

public:
    static RpaAppDataNotify* Instance();

signals:
    // SetModified(true): one edit.
    void SigEdited(RpaAppData* app);
    // A save goes out: the package list was checked, and the mark of unsaved work, which was set, came off.
    void SigSaving(RpaAppData* app);
    // The mark came off without any of that: the author does not want the work saved.
    void SigGivenUp(RpaAppData* app);
    // The author took back all edits since the mark was off last; the mark comes off next.
    void SigTakenBack(RpaAppData* app);
    // Parse() or InitDefault() replaced the content.
    void SigReplaced(RpaAppData* app);
    // An editor shows it to the author from now on, in the place of what it showed before.
    void SigShown(RpaAppData* app);
    // Runs wrote something into its pages, or what they wrote was kept or taken back.
    void SigResultsChanged(RpaAppData* app);
    // The app data is about to go; it can still be read.
    void SigGoing(RpaAppData* app);

private:
    RpaAppDataNotify() = default;
};
