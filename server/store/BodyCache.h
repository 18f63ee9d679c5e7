// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QCache>
#include <QString>

#include <mutex>

namespace server
{
// Bodies that were read and verified lately. A revision never changes, so nothing here grows old. Any thread.
class BodyCache
{
public:
    QByteArray Find(const QString& versionId, qint64 revision); // null when it is not kept
    void Keep(const QString& versionId, qint64 revision, const QByteArray& body);

private:
    static constexpr int capacityBytes = 64 * 1024 * 1024;
    static constexpr int largestBody = capacityBytes / 4;

    std::mutex mutex;
    QCache<QPair<QString, qint64>, QByteArray> bodies{capacityBytes};
};
} // namespace server
