// SPDX-License-Identifier: Apache-2.0

#include "TaskPool.h"

namespace server
{
TaskPool::TaskPool(int threadCount, std::size_t queueBound) : bound(queueBound)
{
    for (int i = 0; i < threadCount; ++i)
        threads.emplace_back([this] { Work(); });
}

TaskPool::~TaskPool()
{
    {
        const std::lock_guard lock(mutex);
        ending = true;
    }
    changed.notify_all();
    for (Thread& thread : threads)
        thread.Join();
}

bool TaskPool::TryRun(std::function<void()> task, Queue queue)
{
    {
        const std::lock_guard lock(mutex);
        Tasks& waiting = tasks.at(static_cast<std::size_t>(queue));
        if (waiting.size() >= bound)
            return false;
        waiting.push_back(std::move(task));
    }
    changed.notify_one();
    return true;
}

std::function<void()> TaskPool::TakeNext()
{
    Tasks& next = tasks.at(tasks.at(turn).empty() ? 1 - turn : turn);
    turn = 1 - turn;
    auto task = std::move(next.front());
    next.pop_front();
    return task;
}

void TaskPool::Work()
{
    std::unique_lock lock(mutex);
    while (true) {
        changed.wait(lock, [this] { return ending || !IsIdle(); });
        if (IsIdle())
            return;
        const auto task = TakeNext();
        lock.unlock();
        task();
        lock.lock();
    }
}
} // namespace server
