// SPDX-License-Identifier: Apache-2.0

#include "MonitorQueue_p.h"

#include <WbFoundation/JsonGuard.h>

#include <QDir>
#include <QFile>
#include <QSaveFile>

namespace
{
constexpr qint64 largestFileBytes = 64 * 1024 * 1024;

bool IsEvent(const QByteArray& line)
{
    return line.startsWith('{') && JsonGuard::Check(line);
}
} // namespace

void MonitorQueue::Open(const QString& queueFolder, int maximum)
{
    folder = queueFolder;
    maxEvents = maximum;
    if (!QDir().mkpath(folder))
        return;

    QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    lock = std::make_unique<FileLock>(folder + QStringLiteral("/events.lock"));
    if (lock->TryLock() != FileLock::Result::Locked) {
        lock.reset();
        return;
    }
    Load();
}

void MonitorQueue::Close()
{
    // What is on disk is read again by the next Open().
    if (lock)
        events.clear();
    lock.reset();
}

void MonitorQueue::Load()
{
    QFile file(GetFileName());
    // A file of that size is not one that this class wrote.
    if (file.size() > largestFileBytes)
        file.remove();
    const bool isThere = file.open(QIODevice::ReadOnly);

    std::deque<QByteArray> earlier;
    const QList<QByteArray> lines = isThere ? file.readAll().split('\n') : QList<QByteArray>();
    file.close();
    for (const QByteArray& line : lines) {
        // A process that was killed while it wrote leaves half a line.
        if (IsEvent(line))
            earlier.push_back(line);
    }
    earlier.insert(earlier.end(), events.begin(), events.end());
    events.swap(earlier);
    Bound();
    // The next event must not be written behind half a line.
    Rewrite();
}

void MonitorQueue::Append(const UsageMonitor::Batch& newEvents)
{
    for (const QByteArray& event : newEvents)
        events.push_back(event);
    if (GetCount() > maxEvents) {
        Bound();
        Rewrite();
        return;
    }
    if (!lock)
        return;

    QFile file(GetFileName());
    if (!file.open(QIODevice::WriteOnly | QIODevice::Append))
        return;
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
    for (const QByteArray& event : newEvents)
        file.write(event + '\n');
}

UsageMonitor::Batch MonitorQueue::GetFirst(int count) const
{
    UsageMonitor::Batch batch;
    for (int i = 0; i < qMin(count, GetCount()); ++i)
        batch.append(events[static_cast<size_t>(i)]);
    return batch;
}

void MonitorQueue::RemoveFirst(int count)
{
    events.erase(events.begin(), events.begin() + qMin(count, GetCount()));
    Rewrite();
}

void MonitorQueue::Clear()
{
    events.clear();
    Rewrite();
}

void MonitorQueue::Bound()
{
    while (GetCount() > maxEvents)
        events.pop_front();
}

void MonitorQueue::Rewrite() const
{
    if (!lock)
        return;
    if (events.empty()) {
        QFile::remove(GetFileName());
        return;
    }
    QSaveFile file(GetFileName());
    if (!file.open(QIODevice::WriteOnly))
        return;
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner);
    for (const QByteArray& event : events)
        file.write(event + '\n');
    file.commit();
}

QString MonitorQueue::GetFileName() const
{
    return folder + QStringLiteral("/events.jsonl");
}
