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

bool TaskPool::TryRun(std::function<void()> task)
{
    {
        const std::lock_guard lock(mutex);
        if (tasks.size() >= bound)
            return false;
        tasks.push_back(std::move(task));
    }
    changed.notify_one();
    return true;
}

void TaskPool::Work()
{
    std::unique_lock lock(mutex);
    while (true) {
        changed.wait(lock, [this] { return ending || !tasks.empty(); });
        if (tasks.empty())
            return;
        const auto task = std::move(tasks.front());
        tasks.pop_front();
        lock.unlock();
        task();
        lock.lock();
    }
}
} // namespace server
