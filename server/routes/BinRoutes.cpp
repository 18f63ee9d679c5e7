// SPDX-License-Identifier: Apache-2.0

#include "../base/Clock.h"
#include "../rules/AppRules.h"
#include "Services.h"
#include "Wire.h"
#include "WriteOnce.h"

namespace server
{
namespace
{
using Rule = App (*)(Transaction& store, const Account& account, const QString& appId, qint64 now);

// Names of other apps are touched when one comes back under a free one.
auto Doing(Rule rule, int status)
{
    return [rule, status](Services& services, const Request& request, const Reply& reply) {
        const auto act = [rule, status, account = *request.account,
                          id = request.PathValue()](Transaction& store) {
            const App app = rule(store, account, id, NowMs());
            return status == 204 ? Response::Empty() : wire::Answer(status, app);
        };
        WriteOnce(services.store, request, act, reply, Reach::Anything);
    };
}

void ListBin(Services& services, const Request& request, const Reply& reply)
{
    const auto write = [](JsonText& text, const App& app) {
        wire::Append(text.BeginObject().Key("app"), app).Member("deletedAt", app.deletedAt).EndObject();
    };
    reply(wire::ListAnswer("apps", services.store.DeletedApps(*request.account, NowMs() - binMs), write));
}
} // namespace

void AddBinRoutes(Router& router, Services& services)
{
    router.Add({"GET", "/api/v1/deleted-apps", Access::SignedIn, 0, Bind(services, ListBin)});
    const auto add = [&](const char* method, const char* pattern, Rule rule, int status) {
        router.Add({method, pattern, Access::SignedIn, wire::smallBody, Bind(services, Doing(rule, status))});
    };
    add("DELETE", "/api/v1/apps/{appId}", rules::DeleteApp, 204);
    add("POST", "/api/v1/deleted-apps/{appId}/restore", rules::RestoreApp, 200);
    add("DELETE", "/api/v1/deleted-apps/{appId}", rules::PurgeApp, 204);
}
} // namespace server
