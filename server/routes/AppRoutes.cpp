// SPDX-License-Identifier: Apache-2.0

#include "../base/Clock.h"
#include "../rules/AppRules.h"
#include "Dispatcher.h"
#include "Services.h"
#include "Wire.h"
#include "WriteOnce.h"

#include <QJsonArray>
#include <QJsonValue>
#include <QSet>
#include <QVariant>

namespace server
{
namespace
{
constexpr int longestAppName = 50;
constexpr int mostTags = 10;
constexpr int longestTag = 20;

Refusal BadName()
{
    return {400, "bad-name", QStringLiteral("应用名称应为 1 到 50 个字符，且不能包含控制字符。")};
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
    for (const App& app : services.store.AppsEditableBy(*request.account))
        if (query.isEmpty() || app.name.contains(query, Qt::CaseInsensitive))
            wire::Append(text, app);
    reply(Response::Json(200, text.EndArray().EndObject().Take()));
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
        return reply(wire::Refused(BadName()));
    if (kind != 0 && kind != 1)
        return reply(wire::BadRequest("bad-kind", QStringLiteral("应用类型不正确。")));
    const bool anyName = object.value(QLatin1String("anyName")).toBool();
    const auto act = [account = *request.account, name, kind, anyName](Transaction& store) {
        return AnswerOf(201, rules::CreateApp(store, account, name, kind, NowMs(), anyName));
    };
    WriteOnce(services.store, request, act, reply);
}

void CopyApp(Services& services, const Request& request, const Reply& reply)
{
    const auto act = [account = *request.account, id = request.PathValue()](Transaction& store) {
        return AnswerOf(201, rules::CopyApp(store, account, id, NowMs()));
    };
    WriteOnce(services.store, request, act, reply, Reach::Anything);
}

void ShowApp(Services& services, const Request& request, const Reply& reply)
{
    const auto app = services.store.FindApp(request.PathValue());
    if (!app || !MayEdit(*request.account, *app))
        return reply(wire::Refused(refusals::NotFound()));
    reply(wire::AppAnswer(200, *app));
}

bool AreTags(const QJsonValue& value)
{
    const QJsonArray tags = value.toArray();
    QSet<QString> seen;
    for (const QJsonValue& tag : tags) {
        const QString text = tag.toString();
        if (!wire::IsName(text, longestTag) || text != text.trimmed() || seen.contains(text.toCaseFolded()))
            return false;
        seen.insert(text.toCaseFolded());
    }
    return value.isArray() && tags.size() <= mostTags;
}

Outcome<AppChange> ReadChange(const QJsonObject& object)
{
    AppChange change;
    const QJsonValue name = object.value(QLatin1String("name"));
    const QJsonValue tags = object.value(QLatin1String("tags"));
    if (name.isUndefined() && tags.isUndefined())
        return Refusal{400, "bad-change", QStringLiteral("请求没有说明要修改什么。")};
    if (!name.isUndefined() && !wire::IsName(name.toString(), longestAppName))
        return BadName();
    if (!tags.isUndefined() && !AreTags(tags))
        return Refusal{400, "bad-tags",
                       QStringLiteral("一个应用最多 10 个标签，每个 1 到 20 个字符，不能重复。")};
    if (!name.isUndefined())
        change.name = name.toString();
    if (!tags.isUndefined())
        change.tags = tags.toVariant().toStringList();
    return change;
}

// Changing an app twice the same is the same as once, so this write needs no idempotency key.
void ChangeApp(Services& services, const Request& request, const Reply& reply)
{
    const auto parsed = wire::SmallObject(request);
    if (const auto* refusal = std::get_if<Refusal>(&parsed))
        return reply(wire::Refused(*refusal));
    const auto change = ReadChange(std::get<QJsonObject>(parsed));
    if (const auto* refusal = std::get_if<Refusal>(&change))
        return reply(wire::Refused(*refusal));
    const auto answer = std::make_shared<Response>();
    const auto act = [answer, account = *request.account, id = request.PathValue(),
                      change = std::get<AppChange>(change)](Transaction& store) {
        *answer = AnswerOf(200, rules::ChangeApp(store, account, id, change, NowMs()));
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
    add("PATCH", "/api/v1/apps/{appId}", wire::smallBody, ChangeApp);
    add("POST", "/api/v1/apps/{appId}/copies", wire::smallBody, CopyApp);
}
} // namespace server
