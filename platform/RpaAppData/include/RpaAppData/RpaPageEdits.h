// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaAppData/RpaAppDataExport.h>

#include <QByteArray>
#include <QObject>
#include <QTimer>

class RpaAppData;
class RpaSavedState;

// The pages' contents as a place of RpaSavedState: a moment after the last edit it is looked whether they
// hold again what was saved last, however the author came back to it. GUI thread only.
class RPAAPPDATA_EXPORT RpaPageEdits : public QObject
{
    Q_OBJECT

public:
    // Made when it is first asked for; lives as long as the app data.
    static RpaPageEdits* Of(RpaAppData* app);

    // Instead of SetModified(true), after each change of what a page holds.
    void Edited();

private:
    explicit RpaPageEdits(RpaAppData* appData);
    QByteArray Digest() const;
    void Remember();
    void Compare();

    RpaAppData* const app;
    RpaSavedState* const savedState;
    QByteArray saved; // of what was saved last; empty while that is not known
    QTimer pause;
};
