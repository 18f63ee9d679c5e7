// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "Transfer_p.h"

#include <QMutex>
#include <QThread>
#include <QThreadPool>

#include <functional>
#include <map>
#include <memory>
#include <vector>

// The network thread: runs all transfers of one client, keeps their deadlines, and reports each that ends by
// itself. Bodies too large to be worked on in passing go to a pool, so that they do not hold up the others.
class TransferWorker
{
public:
    // Called on the worker thread, at most once per id.
    using Report = std::function<void(quint64 id, const WbHttpAnswer& answer)>;

    explicit TransferWorker(Report report);
    // Stops at once; transfers under way are dropped without a report.
    ~TransferWorker();

    TransferWorker(const TransferWorker&) = delete;
    TransferWorker& operator=(const TransferWorker&) = delete;

    // Any thread.
    void Add(quint64 id, const WbHttpRequest& request);
    void Drop(quint64 id);

private:
    using Command = std::function<void()>;
    using Transfers = std::map<quint64, std::unique_ptr<Transfer>>;

    void Post(Command command);
    void Run();
    void RunCommands();
    void RunJob(qint64 bytes, Command job);

    void Prepare(Transfer* transfer);
    void OnPrepared(quint64 id, const PreparedBody& body);
    void StartWaiting();
    void CollectFinished();
    void Check(Transfer* transfer, const WbHttpAnswer& answer);
    void ExpireOverdue();
    int MillisecondsToWait() const;
    void End(quint64 id, WbHttpAnswer answer);
    void Erase(Transfers::iterator position);
    Transfer* Find(quint64 id) const;

    const Report report;
    CURLM* const multi;
    QMutex mutex;
    std::vector<Command> commands; // guarded by mutex
    bool stopping = false;         // guarded by mutex
    Transfers transfers;
    int runningCount = 0;
    QThreadPool pool;
    // Started by Qt: on Windows it clears up after other threads late, and on a thread of its own.
    std::unique_ptr<QThread> thread;
};
