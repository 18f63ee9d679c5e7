// SPDX-License-Identifier: Apache-2.0

#include "ConnectionPool.h"

namespace server
{
ConnectionPool::ConnectionPool(const HttpLimits& theLimits)
    : limits(theLimits),
      budget({limits.bodyBytesInFlight, limits.bodyBytesPerAccount, limits.bodyBytesPerAddress})
{
}

bool ConnectionPool::Admit(const QByteArray& address)
{
    const std::lock_guard lock(mutex);
    if (open >= limits.connections || byAddress.value(address) >= limits.connectionsPerAddress)
        return false;
    ++open;
    ++byAddress[address];
    return true;
}

ConnectionPool::Place ConnectionPool::Add(const std::shared_ptr<Connection>& connection)
{
    const std::lock_guard lock(mutex);
    return connections.insert(connections.end(), connection);
}

void ConnectionPool::Remove(Place place, const QByteArray& address)
{
    const std::lock_guard lock(mutex);
    connections.erase(place);
    --open;
    if (--byAddress[address] == 0)
        byAddress.remove(address);
    if (stopping && connections.empty())
        onEmptied();
}

// Strong references are let go outside the lock, since the last one takes the lock again in Remove().
std::vector<std::shared_ptr<Connection>> ConnectionPool::Live()
{
    std::vector<std::shared_ptr<Connection>> live;
    const std::lock_guard lock(mutex);
    for (const auto& weak : connections)
        if (auto connection = weak.lock())
            live.push_back(std::move(connection));
    return live;
}
} // namespace server
