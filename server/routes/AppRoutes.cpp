#include "../base/Clock.h"
#include "../http/Dispatcher.h"
#include "../rules/AppRules.h"
#include "Services.h"
#include "Wire.h"
#include "WriteOnce.h"

#include <QJsonValue>

namespace server
{
namespace
{
constexpr int longestAppName = 50;

Response BadName()
{
    return wire::BadRequest("bad-name", QStringLiteral("应用名称应为 1 到 50 个字符，且不能包含控制字符。"));
}

Response AnswerOf(int status, const Outcome<App>& outcome)
{
    if (const auto* refusal = std::get_if<Refusal>(&outcome))
        return wire::Refused(*refusal);
    return wire::AppAnswer(status, std::get<App>(outcome));
}

void ListApps(Services& services, const Request& request, const Reply& reply)
{
    const QString query = request.QueryValue("query");
    JsonText text;
    text.BeginObject().Key("apps").BeginArray();
    for (const App& app : services.store.AppsEditableBy(*request.account)) {
        if (query.isEmpty() || app.name.contains(query, Qt::CaseInsensitive))
            wire::Append(text, app);
    }
    reply(Response::Json(200, text.EndArray().EndObject().Text()));
}

void CreateApp(Services& services, const Request& request, const Reply& reply)
{
    const auto parsed = wire::SmallObject(request);
    if (const auto* refusal = std::get_if<Refusal>(&parsed))
        return reply(wire::Refused(*refusal));
    const auto& object = std::get<QJsonObject>(parsed);
    const QString name = object.value(QLatin1String("name")).toString();
    const int kind = object.value(QLatin1String("kind")).toInt(-1);
    if (!wire::IsName(name, longestAppName))
        return reply(BadName());
    if (kind != 0 && kind != 1)
        return reply(wire::BadRequest("bad-kind", QStringLiteral("应用类型不正确。")));
    const auto act = [account = *request.account, name, kind](ITransaction& store) {
        return AnswerOf(201, rules::CreateApp(store, account, name, kind, NowMs()));
    };
    WriteOnce(services.store, request, act, reply);
}

void ShowApp(Services& services, const Request& request, const Reply& reply)
{
    const auto app = services.store.FindApp(request.PathValue());
    if (!app || !MayEdit(*request.account, *app))
        return reply(wire::Refused(refusals::NotFound()));
    reply(wire::AppAnswer(200, *app));
}

// Naming an app twice the same is the same as once, so this write needs no idempotency key.
void RenameApp(Services& services, const Request& request, const Reply& reply)
{
    const auto parsed = wire::SmallObject(request);
    if (const auto* refusal = std::get_if<Refusal>(&parsed))
        return reply(wire::Refused(*refusal));
    const QString name = std::get<QJsonObject>(parsed).value(QLatin1String("name")).toString();
    if (!wire::IsName(name, longestAppName))
        return reply(BadName());
    const auto answer = std::make_shared<Response>();
    const auto act = [answer, account = *request.account, id = request.PathValue(),
                      name](ITransaction& store) {
        *answer = AnswerOf(200, rules::RenameApp(store, account, id, name, NowMs()));
    };
    const auto done = [answer, reply](const std::exception_ptr& failure) {
        reply(failure ? ResponseForFailure(failure) : *answer);
    };
    if (!services.store.Submit({act, done, 0}))
        throw StoreError(StoreFault::Unavailable, QStringLiteral("too many writes wait"));
}
} // namespace

void AddAppRoutes(Router& router, Services& services)
{
    const auto add = [&](const char* method, const char* pattern, qint64 bodyLimit, auto function) {
        router.Add({method, pattern, Access::SignedIn, bodyLimit,
                    [&services, function](const Request& request, const Reply& reply) {
                        function(services, request, reply);
                    }});
    };
    add("GET", "/api/v1/apps", 0, ListApps);
    add("POST", "/api/v1/apps", wire::smallBody, CreateApp);
    add("GET", "/api/v1/apps/{appId}", 0, ShowApp);
    add("PATCH", "/api/v1/apps/{appId}", wire::smallBody, RenameApp);
}
} // namespace server
