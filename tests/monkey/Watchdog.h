// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QtGlobal>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

// Ends the program when the GUI thread has not been heard of for so long that it must be stuck.
class Watchdog
{
public:
    explicit Watchdog(std::chrono::seconds patience);
    ~Watchdog();

    Watchdog(const Watchdog&) = delete;
    Watchdog& operator=(const Watchdog&) = delete;

    // The GUI thread is alive.
    void Beat();
    // The longest time between two beats so far, in milliseconds.
    qint64 GetLongestMs() const { return longest; }

private:
    void Watch(std::chrono::seconds patience);

    std::atomic<qint64> last;
    std::atomic<qint64> longest{0};
    std::mutex mutex;
    std::condition_variable ended;
    bool end = false;
    std::thread thread;
};
