// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaEngineTool/RpaEngineToolExport.h>

#include <QObject>
#include <QString>

class RpaNodeManager;

// Captures elements for the statements of a process. GUI thread.
class RPAENGINETOOL_EXPORT IRpaInspector : public QObject
{
    Q_OBJECT

public:
    explicit IRpaInspector(QObject* parent = nullptr);
    ~IRpaInspector() override;

    // Whether the user is capturing an element right now; a process must not be run meanwhile.
    virtual bool IsCapturing() const = 0;

    // Where captured elements are kept: the store of the app that is edited. Not owned, may go away; null for
    // none.
    virtual void SetNodeManager(RpaNodeManager* manager);

    // Lets the user point at one element. False, and the user is told why, when there is nothing to capture
    // from.
    virtual bool StartCapture();
    virtual void StopCapture();

signals:
    // An element was captured; its id in the store. One that is there already is not stored again.
    void SigCaptured(const QString& nodeId);
    void SigCapturingChanged(bool capturing);
};
