// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "JsonText.h"
#include "Thread.h"

#include <atomic>
#include <condition_variable>
#include <deque>
#include <mutex>

namespace server
{
enum class LogLevel
{
    Debug,
    Info,
    Warning,
    Error
};

// The log: one JSON object per line on standard error. Lines are written by a thread of their own and dropped
// (and counted) when nobody reads them, so that a full pipe never stops a request. Any thread.
class Log
{
public:
    explicit Log(LogLevel least);

    // Writes what waits; not for longer than a second when nobody reads.
    ~Log();

    // True when lines of this level are written at all; ask before building an expensive line.
    bool Wants(LogLevel level) const { return level >= least; }

    // Writes `event` with the members that `details` adds. Never give it a token, a password or app data.
    template <typename Details>
    void Write(LogLevel level, const char* event, const Details& details)
    {
        if (!Wants(level))
            return;
        JsonText line = Start(level, event);
        details(line);
        Enqueue(line.EndObject().Take() + '\n');
    }
    void Write(LogLevel level, const char* event)
    {
        Write(level, event, [](JsonText&) {});
    }

private:
    static JsonText Start(LogLevel level, const char* event);
    void Enqueue(QByteArray line);
    void Drain();

    const LogLevel least;
    std::mutex mutex;
    std::condition_variable changed;
    std::deque<QByteArray> lines;
    qint64 dropped = 0;
    std::atomic<bool> ending{false};
    std::atomic<qint64> endsAt{0}; // by SteadyNowMs(): when the last lines are given up
    Thread writer;
};
} // namespace server
