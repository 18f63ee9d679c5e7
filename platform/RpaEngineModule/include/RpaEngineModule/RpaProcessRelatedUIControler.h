// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaEngineModule/RpaEngineModuleExport.h>

#include <QHash>
#include <QList>
#include <QPointer>
#include <QWidget>

// Disables the widgets registered with it while a process runs and gives each its own state back afterwards.
// GUI thread only.
class RPAENGINEMODULE_EXPORT RpaProcessRelatedUIControler
{
public:
    // The one of the process.
    static RpaProcessRelatedUIControler* Instance();

    // A widget that is added during a run is disabled at once.
    void AddToControl(QPointer<QWidget> widget);

    // A widget that is removed during a run gets its state back.
    void RemoveFromControl(QPointer<QWidget> widget);

    // Used by the engine.
    void SetRunning(bool running);
    bool IsRunning() const;

private:
    RpaProcessRelatedUIControler() = default;

    struct Controlled
    {
        QPointer<QWidget> widget;
        bool enabledBefore = true;
    };
    QList<Controlled> controlled;
    bool running = false;
};
