#include "Services.h"
#include "Wire.h"

namespace server
{
void AddHealthRoutes(Router& router, Services& services)
{
    router.Add({"GET", "/api/v1/health", Access::Public, 0, [&services](const Request&, const Reply& reply) {
                    services.store.Check();
                    reply(Response::Json(200, JsonText()
                                                  .BeginObject()
                                                  .Member("status", QStringLiteral("ok"))
                                                  .Member("store", services.store.Kind())
                                                  .Member("version", services.programVersion)
                                                  .EndObject()
                                                  .Text()));
                }});
}
} // namespace server
