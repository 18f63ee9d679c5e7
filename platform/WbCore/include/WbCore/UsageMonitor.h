// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbCore/WbCoreExport.h>

#include <QByteArray>
#include <QString>
#include <QVector>

#include <chrono>
#include <functional>
#include <memory>

// The built-in monitor's settings: where its queue lies and where its events go. Until the workstation calls
// Start(), events are kept in memory (bounded). One per process.
class WBCORE_EXPORT UsageMonitor
{
public:
    // One event as a JSON object: {"id","event","page","time":UTC milliseconds}; without the parameters it was
    // reported with. The id is unique for ever, so that a receiver can drop what it got twice.
    using Batch = QVector<QByteArray>;

    // Delivers a batch; true when it arrived for good, false to try again later. Called on the monitor's own
    // thread, never twice at once; may take its time.
    using Sink = std::function<bool(const Batch&)>;

    // Where events wait and how they are sent on.
    struct Settings
    {
        QString folder;        // of the queue; made when missing, readable by the user only
        int maxEvents = 10000; // the oldest are dropped
        int batchSize = 100;   // events per call of the sink
        std::chrono::milliseconds interval{5000};      // between batches
        std::chrono::milliseconds maxInterval{300000}; // the pause doubles up to this while the sink fails
    };

    // The one of the process.
    static UsageMonitor* Instance();

    // Starts the worker, which takes over what an earlier run left in the folder. A null sink only queues.
    void Start(const Settings& settings, Sink sink);

    // Writes what is waiting to the disk and ends the worker; events of later calls stay in memory.
    void Stop();

    // The user's choice; true at first. False empties the queue, on disk too, and drops further events.
    void SetEnabled(bool enabled);
    bool IsEnabled() const;

    // Asks the worker for a batch now instead of at the next interval.
    void Flush();

private:
    UsageMonitor();
    ~UsageMonitor();
    friend class BuiltInMonitor;

    class Private;
    const std::unique_ptr<Private> d;
};
