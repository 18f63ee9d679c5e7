// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QHash>
#include <QVector>

#include <chrono>
#include <deque>

namespace server
{
// Counts tries by key within the last minute. What it holds is bounded, and a try costs the same however many
// keys there are: the oldest tries go first. One thread.
class TryTable
{
public:
    using TimePoint = std::chrono::steady_clock::time_point;

    static constexpr std::chrono::seconds window{60};
    static constexpr std::size_t mostTries = 100000;

    // At most `most` tries of a key; 0: as many as it likes.
    explicit TryTable(int theMost) : most(theMost) {}

    // 0 when a try may be made, else the seconds after which to come back. Counts nothing.
    int SecondsToWait(const QByteArray& key, TimePoint now);

    void Count(const QByteArray& key, TimePoint now);

    // The tries of this key are made good.
    void Forget(const QByteArray& key) { byKey.remove(key); }

    std::size_t Size() const { return tries.size(); }

private:
    void DropUntil(TimePoint end);
    void DropOldest();

    const int most;
    std::deque<std::pair<TimePoint, QByteArray>> tries; // oldest first
    QHash<QByteArray, QVector<TimePoint>> byKey;        // the same, oldest first
};
} // namespace server
