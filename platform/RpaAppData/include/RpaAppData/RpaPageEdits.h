// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaAppData/RpaAppDataExport.h>

#include <QObject>

#include <memory>

class QTimer;
class RpaAppData;

// The pages' contents as a place of RpaSavedState: a moment after the last edit it is looked whether they
// hold again what was saved last, however the author came back to it. The rows of tables are shared with what
// was saved, so that neither remembering nor comparing them takes time while few of them change. GUI thread
// only.
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
    ~RpaPageEdits() override;
    void Remember();
    void Compare();

    class Private;
    const std::unique_ptr<Private> d;
    QTimer* const pause;
};
