// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "Request.h"

#include <functional>
#include <vector>

namespace server
{
// Who may use a route. Rights on a single app are the rules' affair.
enum class Access
{
    Public,
    Monitoring, // whoever is on this machine, and holders of the token for it
    SignedIn,
    Administrator
};

struct Route
{
    const char* method;
    const char* pattern; // "/api/v1/apps/{appId}"
    Access access;
    qint64 bodyLimit; // bytes
    std::function<void(const Request&, const Reply&)> handler;
    bool isImmediate = false; // never waits, and so is not kept waiting for a worker either
};

// The route table.
class Router
{
public:
    struct Match
    {
        const Route* route = nullptr;
        std::size_t index = 0; // of the route in Routes()
        std::vector<QString> pathValues;
        QByteArray allowedMethods; // when the path is known and the method is not
    };

    void Add(Route route);
    Match Find(const QByteArray& method, const QByteArray& path) const;
    const std::vector<Route>& Routes() const { return routes; }

private:
    std::vector<Route> routes;
    std::vector<QList<QByteArray>> segments; // of the patterns, beside `routes`
};
} // namespace server
