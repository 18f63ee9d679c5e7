// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaServiceClient/VersionServiceClient.h>
#include <WbCore/UsageMonitor.h>

#include <QObject>
#include <QString>

#include <condition_variable>
#include <mutex>
#include <optional>

// Sends what the usage monitor gathers to the version service, while somebody is signed in there and the user
// allows it. Each account at each server has a queue of its own below the folder, so that nothing goes to
// another server, or counts for another account, than those it was done with. GUI thread.
class UsageReports : public QObject
{
    Q_OBJECT

public:
    explicit UsageReports(const QString& queueFolder, QObject* parent = nullptr);
    ~UsageReports() override; // ends

    // The account is signed in. server: a name that it keeps, whatever address it has.
    void Begin(const QString& server, const QString& pin);
    // Nobody is. What waits stays on the disk; does not wait for a server that is slow to answer.
    void End();

    // The user's choice. False: nothing is sent or gathered any more, and all that waits is removed.
    void Allow(bool allow);

private:
    void Start();
    void Stop();
    bool Deliver(const UsageMonitor::Batch& batch); // on the monitor's thread
    void Send(const UsageMonitor::Batch& batch, quint64 number);
    void SetArrived(quint64 number, bool isThere);

    const QString root;
    QString folder; // of who is signed in; empty: nobody
    bool allowed = true;

    std::mutex mutex; // of what the monitor's thread sees
    std::condition_variable changed;
    quint64 lastBatch = 0; // what came of an earlier one interests nobody
    std::optional<bool> arrived;
    bool stopped = true;

    VersionServiceClient client;
};
