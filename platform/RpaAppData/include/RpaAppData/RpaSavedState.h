// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaAppData/RpaAppDataExport.h>

#include <QObject>
#include <QSet>

class RpaAppData;

// Takes the mark of unsaved work off an app data when the author has taken back all that was done since the
// mark was off last. Places whose edits can be taken back tell of them here instead of calling
// SetModified(true); any other edit keeps the mark until the next save. GUI thread only.
class RPAAPPDATA_EXPORT RpaSavedState : public QObject
{
    Q_OBJECT

public:
    // Made when it is first asked for; lives as long as the app data.
    static RpaSavedState* Of(RpaAppData* app);

    // An edit was done, taken back or done again in the place: one edit like SetModified(true).
    void Edited(QObject* place);
    // The place holds what it held at SigSaved.
    void TakenBack(QObject* place);

signals:
    // The mark was taken off by a save or because the work was given up: what places hold now counts as
    // saved.
    void SigSaved();

private:
    explicit RpaSavedState(RpaAppData* appData);
    void Forget(QObject* place);
    void Saved();

    RpaAppData* const app;
    QSet<QObject*> edited; // places that hold something else than at SigSaved
    bool hasOtherEdits;
    bool isOwn = false;
};
