#pragma once

#include "MonitorQueue_p.h"

#include <condition_variable>
#include <mutex>
#include <thread>

class UsageMonitor::Private
{
public:
    void Add(const QByteArray& event);
    void Run();
    void SendBatch(std::unique_lock<std::mutex>& locked);

    // Guards everything below but the queue, which belongs to the worker while there is one.
    mutable std::mutex mutex;
    std::condition_variable wake;
    std::thread worker;
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
