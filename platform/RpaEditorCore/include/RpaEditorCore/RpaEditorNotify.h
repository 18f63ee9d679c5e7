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

private:
    RpaEditorNotify() = default;
};
