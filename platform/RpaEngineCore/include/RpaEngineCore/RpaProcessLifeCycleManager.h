// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaEngineCore/RpaEngineCoreExport.h>

#include <QList>
#include <QString>

#include <functional>

class IProcessLifeCycle;

// Tells every registered listener what a process does. GUI thread only.
class RPAENGINECORE_EXPORT RpaProcessLifeCycleManager
{
public:
    // The one of the process.
    static RpaProcessLifeCycleManager* Instance();

    // Not owned: a listener is removed before it goes. Adding it twice has it told once.
    void AddLifeCycle(IProcessLifeCycle* listener);
    void RemoveLifeCycle(IProcessLifeCycle* listener);

    // Used by the engine. A listener that goes away meanwhile is skipped.
    void ForEach(const std::function<void(IProcessLifeCycle*)>& call);

private:
    RpaProcessLifeCycleManager() = default;

    QList<IProcessLifeCycle*> listeners;
};
