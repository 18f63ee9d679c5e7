// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "../accounts/LoginLimit.h"
#include "../accounts/Sessions.h"
#include "../base/Log.h"
#include "../base/TaskPool.h"
#include "../http/Router.h"

namespace server
{
// What the routes work with.
struct Services
{
    Store& store;
    Sessions& sessions;
    LoginLimit& loginLimit;
    LoginLimit& redeemLimit;
    TaskPool& passwordPool; // bounds how many passwords are hashed at once
    Log& log;
    QString programVersion;
};

// A handler whose function is given the services.
template <typename Function>
auto Bind(Services& services, Function function)
{
    return [&services, function](const Request& request, const Reply& reply) {
        function(services, request, reply);
    };
}

// One function per concern; together they make the route table.
void AddHealthRoutes(Router& router, Services& services);
void AddMetricsRoutes(Router& router, std::function<QByteArray()> figures);
void AddSessionRoutes(Router& router, Services& services);
void AddAppRoutes(Router& router, Services& services);
void AddBinRoutes(Router& router, Services& services);
void AddVersionRoutes(Router& router, Services& services);
void AddReleaseRoutes(Router& router, Services& services);
void AddInvitationRoutes(Router& router, Services& services);
void AddSaveRoutes(Router& router, Services& services);
void AddReaderRoutes(Router& router, Services& services);
void AddUsageRoutes(Router& router, Services& services);
} // namespace server
