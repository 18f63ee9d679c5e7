// SPDX-License-Identifier: Apache-2.0

#include "../base/Clock.h"
#include "../rules/AppRules.h"
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

void ListApps(Services& services, const Request& request, const Reply& reply)
{
    const QString query = request.QueryValue("query");
    reply(wire::ListAnswer("apps", services.store.AppsEditableBy(*request.account),
                           [&query](JsonText& text, const App& app) {
                               if (query.isEmpty() || app.name.contains(query, Qt::CaseInsensitive))
                                   wire::Append(text, app);
                           }));
}

void CreateApp(Services& services, const Request& request, const Reply& reply)
{
    const QJsonObject object = wire::SmallObject(request);
    const QString name = object.value(QLatin1String("name")).toString();
    const int kind = object.value(QLatin1String("kind")).toInt(-1);
    if (!wire::IsName(name, longestAppName))
        throw BadName();
    if (kind != 0 && kind != 1)
        throw Refusal{400, "bad-kind", QStringLiteral("应用类型不正确。")};
    const bool anyName = object.value(QLatin1String("anyName")).toBool();
    const auto act = [account = *request.account, name, kind, anyName](Transaction& store) {
        return wire::Answer(201, rules::CreateApp(store, account, name, kind, NowMs(), anyName));
    };
    WriteOnce(services.store, request, act, reply);
}

void CopyApp(Services& services, const Request& request, const Reply& reply)
{
    const auto act = [account = *request.account, id = request.PathValue()](Transaction& store) {
        return wire::Answer(201, rules::CopyApp(store, account, id, NowMs()));
    };
    WriteOnce(services.store, request, act, reply, Reach::Anything);
}

void ShowApp(Services& services, const Request& request, const Reply& reply)
{
    reply(wire::Answer(200, EditableApp(services.store, *request.account, request.PathValue())));
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

AppChange ReadChange(const QJsonObject& object)
{
    AppChange change;
    const QJsonValue name = object.value(QLatin1String("name"));
    const QJsonValue tags = object.value(QLatin1String("tags"));
    if (name.isUndefined() && tags.isUndefined())
        throw Refusal{400, "bad-change", QStringLiteral("请求没有说明要修改什么。")};
    if (!name.isUndefined() && !wire::IsName(name.toString(), longestAppName))
        throw BadName();
    if (!tags.isUndefined() && !AreTags(tags))
        throw Refusal{400, "bad-tags",
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
    const auto act = [account = *request.account, id = request.PathValue(),
                      change = ReadChange(wire::SmallObject(request))](Transaction& store) {
        return wire::Answer(200, rules::ChangeApp(store, account, id, change, NowMs()));
    };
    WriteAgain(services.store, act, reply);
}
} // namespace

void AddAppRoutes(Router& router, Services& services)
{
    router.Add({"GET", "/api/v1/apps", Access::SignedIn, 0, Bind(services, ListApps)});
    router.Add({"POST", "/api/v1/apps", Access::SignedIn, wire::smallBody, Bind(services, CreateApp)});
    router.Add({"GET", "/api/v1/apps/{appId}", Access::SignedIn, 0, Bind(services, ShowApp)});
    router.Add(
        {"PATCH", "/api/v1/apps/{appId}", Access::SignedIn, wire::smallBody, Bind(services, ChangeApp)});
    router.Add(
        {"POST", "/api/v1/apps/{appId}/copies", Access::SignedIn, wire::smallBody, Bind(services, CopyApp)});
}
} // namespace server
