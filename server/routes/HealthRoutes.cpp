// SPDX-License-Identifier: Apache-2.0

#include "Services.h"
#include "Wire.h"

namespace server
{
namespace
{
JsonText& Append(JsonText& text, const Services& services, const char* status)
{
    return text.Member("status", QString::fromLatin1(status))
        .Member("store", services.store.Kind())
        .Member("version", services.programVersion);
}

Response Healthy(const Services& services)
{
    JsonText text;
    return Response::Json(200, Append(text.BeginObject(), services, "ok").EndObject().Take());
}

Response StoreSilent(const Services& services)
{
    JsonText text;
    text.BeginObject()
        .Member("code", QStringLiteral("store-unavailable"))
        .Member("message", QStringLiteral("服务在运行，但数据库没有应答，请联系管理员。"));
    return Response::Json(503, Append(text, services, "store").EndObject().Take()).With("Retry-After", "5");
}
} // namespace

// Whoever asks wants to know at once, most of all when every worker waits for the database.
void AddHealthRoutes(Router& router, Services& services)
{
    router.Add({"GET", "/api/v1/health", Access::Public, 0,
                [&services](const Request&, const Reply& reply) {
                    reply(services.store.Answers() ? Healthy(services) : StoreSilent(services));
                },
                true});
}
} // namespace server
