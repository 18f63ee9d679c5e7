// SPDX-License-Identifier: Apache-2.0

#include "../base/Clock.h"
#include "../rules/ReleaseRules.h"
#include "../rules/TakeBackRules.h"
#include "Services.h"
#include "Wire.h"
#include "WriteOnce.h"

#include <QJsonValue>

#include <set>

namespace server
{
namespace
{
constexpr int longestReason = 200;

Response AnswerOf(const Outcome<ReleaseResult>& outcome)
{
    if (const auto* refusal = std::get_if<Refusal>(&outcome))
        return wire::Refused(*refusal);
    const auto& result = std::get<ReleaseResult>(outcome);
    JsonText text;
    text.BeginObject()
        .Member("result", result.tookEffect ? 1 : 0)
        .Member("needTip", result.needTip)
        .Member("message", result.message);
    wire::Append(text.Key("version"), result.version);
    return Response::Json(200, text.EndObject().Take()).With("ETag", wire::ETag(result.version.revision));
}

void ReleaseOne(Services& services, const Request& request, const Reply& reply)
{
    const auto revision = wire::BasedOnRevision(request);
    if (const auto* refusal = std::get_if<Refusal>(&revision))
        return reply(wire::Refused(*refusal));
    const auto parsed = wire::SmallObject(request);
    if (const auto* refusal = std::get_if<Refusal>(&parsed))
        return reply(wire::Refused(*refusal));
    const int type = std::get<QJsonObject>(parsed).value(QLatin1String("type")).toInt();
    if (type != static_cast<int>(ReleaseType::Gray) && type != static_cast<int>(ReleaseType::Online))
        return reply(wire::BadRequest("bad-type", QStringLiteral("发布类型不正确。")));
    const auto act = [account = *request.account, id = request.PathValue(),
                      revision = std::get<qint64>(revision),
                      type = static_cast<ReleaseType>(type)](Transaction& store) {
        return AnswerOf(rules::ReleaseVersion(store, account, id, revision, type, NowMs()));
    };
    WriteOnce(services.store, request, act, reply);
}

void ListReleases(Services& services, const Request& request, const Reply& reply)
{
    const auto app = services.store.FindApp(request.PathValue());
    if (!app || !MayEdit(*request.account, *app))
        return reply(wire::Refused(refusals::NotFound()));
    JsonText text;
    text.BeginObject().Key("releases").BeginArray();
    std::set<VersionState> known;
    for (const Release& release : services.store.ReleasesOf(app->id)) {
        const Version& version = release.version;
        const bool isPresent = version.withdrawnAt == 0 && known.insert(version.state).second;
        wire::Append(text.BeginObject().Key("version"), version);
        text.Member("releasedAt", release.releasedAt).Member("present", isPresent).EndObject();
    }
    reply(Response::Json(200, text.EndArray().EndObject().Take()));
}

Outcome<TakeBackOrder> ReadTakeBack(const Request& request)
{
    const auto parsed = wire::SmallObject(request);
    if (const auto* refusal = std::get_if<Refusal>(&parsed))
        return *refusal;
    const auto& object = std::get<QJsonObject>(parsed);
    const int state = object.value(QLatin1String("state")).toInt();
    const QString reason = object.value(QLatin1String("reason")).toString().trimmed();
    const TakeBackOrder order{static_cast<VersionState>(state),
                              object.value(QLatin1String("from")).toString(),
                              object.value(QLatin1String("to")).toString(), reason};
    if (order.state != VersionState::Gray && order.state != VersionState::Online)
        return Refusal{400, "bad-state", QStringLiteral("版本状态不正确。")};
    if (!wire::IsName(reason, longestReason))
        return Refusal{400, "bad-reason",
                       QStringLiteral("请填写原因，不超过 200 个字符，且不能包含控制字符。")};
    return order;
}

void TakeBack(Services& services, const Request& request, const Reply& reply)
{
    const auto order = ReadTakeBack(request);
    if (const auto* refusal = std::get_if<Refusal>(&order))
        return reply(wire::Refused(*refusal));
    const auto act = [account = *request.account, appId = request.PathValue(),
                      order = std::get<TakeBackOrder>(order)](Transaction& store) {
        const auto outcome = rules::TakeBack(store, account, appId, order, NowMs());
        if (const auto* refusal = std::get_if<Refusal>(&outcome))
            return wire::Refused(*refusal);
        JsonText text;
        text.BeginObject().Member("versionId", std::get<QString>(outcome));
        return Response::Json(200, text.EndObject().Take());
    };
    WriteOnce(services.store, request, act, reply);
}
} // namespace

void AddReleaseRoutes(Router& router, Services& services)
{
    const auto add = [&](const char* method, const char* pattern, qint64 bodyLimit, auto function) {
        router.Add({method, pattern, Access::SignedIn, bodyLimit,
                    [&services, function](const Request& request, const Reply& reply) {
                        function(services, request, reply);
                    }});
    };
    add("POST", "/api/v1/versions/{versionId}/release", wire::smallBody, ReleaseOne);
    add("GET", "/api/v1/apps/{appId}/releases", 0, ListReleases);
    add("POST", "/api/v1/apps/{appId}/take-back", wire::smallBody, TakeBack);
}
} // namespace server
