// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "Thread.h"

#include <array>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <vector>

namespace server
{
// A fixed number of threads that work off two queues of bounded length, in turns while both have something:
// whoever fills the one keeps nobody from the other. Any thread may call it.
class TaskPool
{
public:
    enum class Queue : std::size_t
    {
        Common,
        Known
    };

    TaskPool(int threads, std::size_t queueBound); // of each queue

    // Finishes what is queued, then ends the threads.
    ~TaskPool();

    // False, with nothing queued, when the queue is full.
    bool TryRun(std::function<void()> task, Queue queue = Queue::Common);

private:
    using Tasks = std::deque<std::function<void()>>;

    void Work();
    bool IsIdle() const { return tasks[0].empty() && tasks[1].empty(); }
    std::function<void()> TakeNext();

    const std::size_t bound;
    std::mutex mutex;
    std::condition_variable changed;
    std::array<Tasks, 2> tasks;
    std::size_t turn = 0; // whose task goes next, if it has one
    bool ending = false;
    std::vector<Thread> threads;
};
} // namespace server
