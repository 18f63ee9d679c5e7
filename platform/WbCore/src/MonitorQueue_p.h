// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbCore/UsageMonitor.h>
#include <WbSystem/FileLock.h>

#include <deque>
#include <memory>

// The events that wait to be sent, in memory and in one file of one line each. Used by one thread at a time.
class MonitorQueue
{
public:
    // Reads what an earlier run left. When another process uses the folder, or it cannot be written, events
    // are kept in memory only.
    void Open(const QString& folder, int maxEvents);
    void Close();

    void Append(const UsageMonitor::Batch& events);
    UsageMonitor::Batch GetFirst(int count) const;
    void RemoveFirst(int count);
    void Clear();

    int GetCount() const { return static_cast<int>(events.size()); }

private:
    void Load();
    void Bound();
    void Rewrite() const;
    QString GetFileName() const;

    QString folder;
    int maxEvents = 0;
    std::unique_ptr<FileLock> lock;
    std::deque<QByteArray> events;
};
