// SPDX-License-Identifier: Apache-2.0

#include "Services.h"
#include "Wire.h"

#include <algorithm>

namespace server
{
namespace
{
constexpr int auditPage = 100;
constexpr int longestAuditPage = 1000;

Response ListOf(const std::vector<ReleasedApp>& apps, const QString& query)
{
    return wire::ListAnswer("apps", apps, [&query](JsonText& text, const ReleasedApp& released) {
        if (query.isEmpty() || released.app.name.contains(query, Qt::CaseInsensitive))
            wire::Append(text, released);
    });
}

void ShowAudit(Services& services, const Request& request, const Reply& reply)
{
    const QString asked = request.QueryValue("limit");
    bool isNumber = true;
    const int limit = asked.isNull() ? auditPage : asked.toInt(&isNumber);
    if (!isNumber || limit < 1)
        throw Refusal{400, "bad-limit", QStringLiteral("条数不正确。")};
    reply(wire::ListAnswer("entries",
                           services.store.Audit(request.account->venderId, request.QueryValue("before"),
                                                std::min(limit, longestAuditPage))));
}
} // namespace

void AddReaderRoutes(Router& router, Services& services)
{
    router.Add(
        {"GET", "/api/v1/online-apps", Access::SignedIn, 0,
         [&services](const Request& request, const Reply& reply) {
             reply(ListOf(services.store.OnlineApps(request.account->venderId), request.QueryValue("query")));
         }});
    router.Add({"GET", "/api/v1/gray-apps", Access::SignedIn, 0,
                [&services](const Request& request, const Reply& reply) {
                    reply(ListOf(services.store.GrayApps(request.account->pin), request.QueryValue("query")));
                }});
    router.Add({"GET", "/api/v1/audit", Access::Administrator, 0, Bind(services, ShowAudit)});
}
} // namespace server
