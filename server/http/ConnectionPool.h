// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "BodyBudget.h"
#include "HttpServer.h"

#include <atomic>
#include <functional>
#include <list>
#include <memory>
#include <mutex>
#include <vector>

namespace server
{
class Connection;

// What the connections of one server share: its limits, the handler, and the list of them. Any thread.
class ConnectionPool
{
public:
    using Place = std::list<std::weak_ptr<Connection>>::iterator;

    explicit ConnectionPool(const HttpLimits& limits);

    // Whether one more connection from that address is served; then Remove() is owed for it.
    bool Admit(const QByteArray& address);
    Place Add(const std::shared_ptr<Connection>& connection);
    // The connection is gone; calls onEmptied when it was the last one of a server that stops.
    void Remove(Place place, const QByteArray& address);
    std::vector<std::shared_ptr<Connection>> Live();

    const HttpLimits limits;
    BodyBudget budget;
    IHttpHandler* handler = nullptr; // while the server runs
    std::atomic<bool> stopping{false};
    std::atomic<int> open{0};        // admitted and not removed yet
    std::function<void()> onEmptied; // set before the first connection

private:
    std::mutex mutex;
    std::list<std::weak_ptr<Connection>> connections;
    QHash<QByteArray, int> byAddress;
};
} // namespace server
