#include "../base/Clock.h"
#include "../rules/ReleaseRules.h"
#include "Services.h"
#include "Wire.h"
#include "WriteOnce.h"

#include <QJsonValue>

namespace server
{
namespace
{
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
    return Response::Json(200, text.EndObject().Text()).With("ETag", wire::ETag(result.version.revision));
}

void Release(Services& services, const Request& request, const Reply& reply)
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
                      type = static_cast<ReleaseType>(type)](ITransaction& store) {
        return AnswerOf(rules::ReleaseVersion(store, account, id, revision, type, NowMs()));
    };
    WriteOnce(services.store, request, act, reply);
}
} // namespace

void AddReleaseRoutes(Router& router, Services& services)
{
    router.Add(
        {"POST", "/api/v1/versions/{versionId}/release", Access::SignedIn, wire::smallBody,
         [&services](const Request& request, const Reply& reply) { Release(services, request, reply); }});
}
} // namespace server
