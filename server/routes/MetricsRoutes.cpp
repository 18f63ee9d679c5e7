// SPDX-License-Identifier: Apache-2.0

#include "Services.h"

namespace server
{
void AddMetricsRoutes(Router& router, std::function<QByteArray()> figures)
{
    router.Add({"GET", "/metrics", Access::Monitoring, 0,
                [figures = std::move(figures)](const Request&, const Reply& reply) {
                    Response response;
                    response.contentType = QByteArrayLiteral("text/plain; version=0.0.4; charset=utf-8");
                    response.body = figures();
                    reply(std::move(response));
                }});
}
} // namespace server
