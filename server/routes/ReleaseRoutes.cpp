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

Response AnswerOf(const ReleaseResult& result)
{
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
    const qint64 revision = wire::BasedOnRevision(request);
    const int type = wire::SmallObject(request).value(QLatin1String("type")).toInt();
    if (type != static_cast<int>(ReleaseType::Gray) && type != static_cast<int>(ReleaseType::Online))
        throw Refusal{400, "bad-type", QStringLiteral("发布类型不正确。")};
    const auto act = [account = *request.account, id = request.PathValue(), revision,
                      type = static_cast<ReleaseType>(type)](Transaction& store) {
        return AnswerOf(rules::ReleaseVersion(store, account, id, revision, type, NowMs()));
    };
    WriteOnce(services.store, request, act, reply);
}

void ListReleases(Services& services, const Request& request, const Reply& reply)
{
    const App app = EditableApp(services.store, *request.account, request.PathValue());
    std::set<VersionState> known;
    const auto write = [&known](JsonText& text, const Release& release) {
        const Version& version = release.version;
        const bool isPresent = version.withdrawnAt == 0 && known.insert(version.state).second;
        wire::Append(text.BeginObject().Key("version"), version);
        text.Member("releasedAt", release.releasedAt).Member("present", isPresent).EndObject();
    };
    reply(wire::ListAnswer("releases", services.store.ReleasesOf(app.id), write));
}

TakeBackOrder ReadTakeBack(const Request& request)
{
    const QJsonObject object = wire::SmallObject(request);
    const int state = object.value(QLatin1String("state")).toInt();
    const QString reason = object.value(QLatin1String("reason")).toString().trimmed();
    TakeBackOrder order{static_cast<VersionState>(state), object.value(QLatin1String("from")).toString(),
                        object.value(QLatin1String("to")).toString(), reason};
    if (order.state != VersionState::Gray && order.state != VersionState::Online)
        throw Refusal{400, "bad-state", QStringLiteral("版本状态不正确。")};
    if (!wire::IsName(reason, longestReason))
        throw Refusal{400, "bad-reason",
                      QStringLiteral("请填写原因，不超过 200 个字符，且不能包含控制字符。")};
    return order;
}

void TakeBack(Services& services, const Request& request, const Reply& reply)
{
    const auto act = [account = *request.account, appId = request.PathValue(),
                      order = ReadTakeBack(request)](Transaction& store) {
        JsonText text;
        text.BeginObject().Member("versionId", rules::TakeBack(store, account, appId, order, NowMs()));
        return Response::Json(200, text.EndObject().Take());
    };
    WriteOnce(services.store, request, act, reply);
}
} // namespace

void AddReleaseRoutes(Router& router, Services& services)
{
    router.Add({"POST", "/api/v1/versions/{versionId}/release", Access::SignedIn, wire::smallBody,
                Bind(services, ReleaseOne)});
    router.Add({"GET", "/api/v1/apps/{appId}/releases", Access::SignedIn, 0, Bind(services, ListReleases)});
    router.Add({"POST", "/api/v1/apps/{appId}/take-back", Access::SignedIn, wire::smallBody,
                Bind(services, TakeBack)});
}
} // namespace server
