// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "../base/Thread.h"
#include "../sql/Dialect.h"

#include <atomic>
#include <condition_variable>
#include <mutex>

namespace server
{
// Asks the database a cheap question every second, on a thread and a connection of its own, so that everybody
// else can know without asking whether it answers. Any thread.
class StoreWatch
{
public:
    explicit StoreWatch(std::shared_ptr<const IDialect> dialect);
    ~StoreWatch();

    // False when the last question failed or has been waiting for its answer for longer than a busy database
    // takes.
    bool Answers() const;

private:
    void Work();
    bool Ask();
    bool AskOnce();

    const std::shared_ptr<const IDialect> dialect;
    std::unique_ptr<class SqlConnection> connection; // the thread's
    std::atomic<bool> answered{true};
    std::atomic<qint64> askedAtMs{0}; // 0: no question is open
    std::mutex mutex;
    std::condition_variable changed;
    std::atomic<bool> ending{false};
    Thread watcher;
};
} // namespace server
