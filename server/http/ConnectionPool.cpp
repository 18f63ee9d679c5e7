#include "ConnectionPool.h"

namespace server
{
ConnectionPool::ConnectionPool(const HttpLimits& theLimits)
    : limits(theLimits),
      budget({limits.bodyBytesInFlight, limits.bodyBytesPerAccount, limits.bodyBytesPerAddress})
{
}

ConnectionPool::Place ConnectionPool::Add(const std::shared_ptr<Connection>& connection)
{
    const std::lock_guard lock(mutex);
    return connections.insert(connections.end(), connection);
}

void ConnectionPool::Remove(Place place)
{
    const std::lock_guard lock(mutex);
    connections.erase(place);
    if (stopping && connections.empty())
        onEmptied();
}

// Strong references are let go outside the lock, since the last one takes the lock again in Remove().
std::vector<std::shared_ptr<Connection>> ConnectionPool::Live()
{
    std::vector<std::shared_ptr<Connection>> live;
    const std::lock_guard lock(mutex);
    for (const auto& weak : connections) {
        if (auto connection = weak.lock())
            live.push_back(std::move(connection));
    }
    return live;
}
} // namespace server
