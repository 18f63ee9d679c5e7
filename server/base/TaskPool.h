#pragma once

#include "Thread.h"

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <vector>

namespace server
{
// A fixed number of threads that work off a queue of bounded length. Any thread may call it.
class TaskPool
{
public:
    TaskPool(int threads, std::size_t queueBound);

    // Finishes what is queued, then ends the threads.
    ~TaskPool();

    // False, with nothing queued, when the queue is full.
    bool TryRun(std::function<void()> task);

private:
    void Work();

    const std::size_t bound;
    std::mutex mutex;
    std::condition_variable changed;
    std::deque<std::function<void()>> tasks;
    bool ending = false;
    std::vector<Thread> threads;
};
} // namespace server
