// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "MonitorQueue_p.h"

#include <QThread>

#include <condition_variable>
#include <memory>
#include <mutex>

class UsageMonitor::Private
{
public:
    void Add(const QByteArray& event);
    void Run();
    void SendBatch(std::unique_lock<std::mutex>& locked);

    // Guards everything below but the queue, which belongs to the worker while there is one.
    mutable std::mutex mutex;
    std::condition_variable wake;
    // Started by Qt: on Windows it clears up after other threads late, and on a thread of its own.
    std::unique_ptr<QThread> worker;
    Settings settings;
    Sink sink;
    Batch incoming;
    std::chrono::milliseconds pause{0};
    bool enabled = true;
    bool emptying = false;
    bool flushing = false;
    bool stopping = false;

    MonitorQueue queue;
};
