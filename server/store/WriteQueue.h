// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "../base/Thread.h"
#include "../sql/SqlConnection.h"
#include "Store.h"

#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>

namespace server
{
// The one writer of a store. The writes that wait together are committed in one transaction: under load this
// multiplies the rate of saves, since a commit costs a sync of the disk however much it holds.
class WriteQueue
{
public:
    // The connection is opened on the writer's thread at the first write.
    // `committed` is called after each commit with the ids of the apps and versions it changed, before
    // anybody else is told.
    // `answers` says whether the database answers at all; nothing is tried while it does not.
    WriteQueue(std::shared_ptr<const IDialect> dialect,
               std::function<void(const std::vector<QString>& changedIds)> committed,
               std::function<bool()> answers);

    // Finishes what is queued.
    ~WriteQueue();

    bool Submit(Write write);
    WriterFigures Figures() const;

private:
    using Group = std::vector<Write>;
    using Failures = std::vector<std::exception_ptr>;

    using Duration = std::chrono::steady_clock::duration;

    void Work();
    // With the mutex held.
    void Gather(std::unique_lock<std::mutex>& lock);
    Group TakeGroup();

    Failures Commit(Group& group);
    void TakeLocks(const Group& group);
    void Apply(Group& group, Failures& failures, std::vector<QString>& changedIds);
    SqlConnection& Connected();

    const std::shared_ptr<const IDialect> dialect;
    const std::function<void(const std::vector<QString>&)> committed;
    const std::function<bool()> answers;
    mutable std::mutex mutex;
    std::condition_variable changed;
    std::deque<Write> waiting;
    qint64 waitingBytes = 0;
    WriterFigures figures;
    bool ending = false;
    std::size_t expected = 1;                  // writes that were under way together at the last commit
    Duration commitTime{0};                    // of the last commit
    std::unique_ptr<SqlConnection> connection; // the writer thread's
    Thread writer;
};
} // namespace server
