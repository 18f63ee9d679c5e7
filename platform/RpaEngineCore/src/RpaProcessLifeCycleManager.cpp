// SPDX-License-Identifier: Apache-2.0

#include <RpaEngineCore/RpaProcessLifeCycleManager.h>

RpaProcessLifeCycleManager* RpaProcessLifeCycleManager::Instance()
{
    static RpaProcessLifeCycleManager instance;
    return &instance;
}

void RpaProcessLifeCycleManager::AddLifeCycle(IProcessLifeCycle* listener)
{
    if (listener && !listeners.contains(listener))
        listeners.append(listener);
}

void RpaProcessLifeCycleManager::RemoveLifeCycle(IProcessLifeCycle* listener)
{
    listeners.removeOne(listener);
}

void RpaProcessLifeCycleManager::ForEach(const std::function<void(IProcessLifeCycle*)>& call)
{
    // A listener may remove itself, or delete another one, while it is told.
    const QList<IProcessLifeCycle*> told = listeners;
    for (IProcessLifeCycle* listener : told)
        if (listeners.contains(listener))
            call(listener);
}
