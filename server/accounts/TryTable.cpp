// SPDX-License-Identifier: Apache-2.0

#include "TryTable.h"

namespace server
{
int TryTable::SecondsToWait(const QByteArray& key, TimePoint now)
{
    DropUntil(now - window);
    const auto found = byKey.constFind(key);
    if (most == 0 || found == byKey.constEnd() || found->size() < most)
        return 0;
    const auto left = std::chrono::ceil<std::chrono::seconds>(found->first() + window - now);
    return static_cast<int>(left.count());
}

void TryTable::Count(const QByteArray& key, TimePoint now)
{
    if (most == 0)
        return;
    if (tries.size() >= mostTries)
        DropOldest();
    tries.emplace_back(now, key);
    byKey[key].push_back(now);
}

void TryTable::DropUntil(TimePoint end)
{
    while (!tries.empty() && tries.front().first <= end)
        DropOldest();
}

// A forgotten key may have been counted anew since, so only the try that is meant is taken from it.
void TryTable::DropOldest()
{
    const auto [at, key] = tries.front();
    tries.pop_front();
    const auto found = byKey.find(key);
    if (found == byKey.end() || found->first() != at)
        return;
    found->pop_front();
    if (found->isEmpty())
        byKey.erase(found);
}
} // namespace server
