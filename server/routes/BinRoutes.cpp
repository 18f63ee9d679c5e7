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
using Rule = Outcome<App> (*)(Transaction& store, const Account& account, const QString& appId, qint64 now);

// Names of other apps are touched when one comes back under a free one.
void Do(Rule rule, int status, Services& services, const Request& request, const Reply& reply)
{
    const auto act = [rule, status, account = *request.account,
                      id = request.PathValue()](Transaction& store) {
        const auto outcome = rule(store, account, id, NowMs());
        if (const auto* refusal = std::get_if<Refusal>(&outcome))
            return wire::Refused(*refusal);
        return status == 204 ? Response::Empty() : wire::AppAnswer(status, std::get<App>(outcome));
    };
    WriteOnce(services.store, request, act, reply, Reach::Anything);
}

void ListBin(Services& services, const Request& request, const Reply& reply)
{
    JsonText text;
    text.BeginObject().Key("apps").BeginArray();
    for (const App& app : services.store.DeletedApps(*request.account, NowMs() - binMs))
        wire::Append(text.BeginObject().Key("app"), app).Member("deletedAt", app.deletedAt).EndObject();
    reply(Response::Json(200, text.EndArray().EndObject().Take()));
}
} // namespace

void AddBinRoutes(Router& router, Services& services)
{
    const auto add = [&](const char* method, const char* pattern, Rule rule, int status) {
        router.Add({method, pattern, Access::SignedIn, wire::smallBody,
                    [&services, rule, status](const Request& request, const Reply& reply) {
                        Do(rule, status, services, request, reply);
                    }});
    };
    router.Add(
        {"GET", "/api/v1/deleted-apps", Access::SignedIn, 0,
         [&services](const Request& request, const Reply& reply) { ListBin(services, request, reply); }});
    add("DELETE", "/api/v1/apps/{appId}", rules::DeleteApp, 204);
    add("POST", "/api/v1/deleted-apps/{appId}/restore", rules::RestoreApp, 200);
    add("DELETE", "/api/v1/deleted-apps/{appId}", rules::PurgeApp, 204);
}
} // namespace server
