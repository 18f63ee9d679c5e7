// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "ThreadState.h"

#include <QThread>

#include <functional>
#include <memory>
#include <utility>

namespace server
{
// A running thread; its end is waited for. Every thread that uses Qt must be one of these: after a thread
// that it did not start, Qt on Windows clears up late and on a thread of its own.
class Thread
{
public:
    explicit Thread(std::function<void()> work)
        : thread(QThread::create([work = std::move(work)] {
              work();
              FreeThreadState();
          }))
    {
        thread->start();
    }
    Thread(Thread&&) = default;
    ~Thread()
    {
        if (thread)
            thread->wait();
    }

    void Join() { thread->wait(); }

private:
    std::unique_ptr<QThread> thread;
};
} // namespace server
