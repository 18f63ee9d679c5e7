// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaEditorCore/RpaEditorCoreExport.h>

#include <QObject>
#include <QString>

// Tells the rest of the workstation what happened in an editor. GUI thread only.
class RPAEDITORCORE_EXPORT RpaEditorNotify : public QObject
{
    Q_OBJECT

public:
    static RpaEditorNotify* Instance();

signals:
    // A version was released: publishType 1 gray, 2 online; needTip as the server answered it.
    void SigPublishFinished(const QString& appId, int publishType, bool needTip);
    // The author picked a version and it is about to be loaded; unsaved work on the one that is open was saved
    // before, given up, or dropped because that one is released. Not for a load that an answer led to, nor while
    // another one is under way.
    void SigVersionPicked(const QString& versionId);

private:
    RpaEditorNotify() = default;
};
