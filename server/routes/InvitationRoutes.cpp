// SPDX-License-Identifier: Apache-2.0

#include "../base/Clock.h"
#include "../rules/InvitationRules.h"
#include "Services.h"
#include "Wire.h"
#include "WriteOnce.h"

#include <QJsonValue>

namespace server
{
namespace
{
constexpr int longestTypedCode = 64;

template <typename Record>
Response AnswerOf(int status, const Outcome<Record>& outcome)
{
    if (const auto* refusal = std::get_if<Refusal>(&outcome))
        return wire::Refused(*refusal);
    JsonText text;
    return Response::Json(status, wire::Append(text, std::get<Record>(outcome)).Take());
}

Outcome<InvitationOrder> ReadOrder(const Request& request)
{
    const auto parsed = wire::SmallObject(request);
    if (const auto* refusal = std::get_if<Refusal>(&parsed))
        return *refusal;
    const auto& object = std::get<QJsonObject>(parsed);
    InvitationOrder order;
    // A value that is no number reads as 0.
    order.validDays = object.value(QLatin1String("validDays"))
                          .toInt(object.contains(QLatin1String("validDays")) ? 0 : order.validDays);
    order.mostUses = object.value(QLatin1String("mostUses"))
                         .toInt(object.contains(QLatin1String("mostUses")) ? 0 : order.mostUses);
    if (order.validDays < 1 || order.validDays > 365)
        return Refusal{400, "bad-valid-days", QStringLiteral("邀请码的有效期应为 1 到 365 天。")};
    if (order.mostUses < 1 || order.mostUses > 10000)
        return Refusal{400, "bad-most-uses", QStringLiteral("邀请码的使用次数应为 1 到 10000 次。")};
    return order;
}

void ListInvitations(Services& services, const Request& request, const Reply& reply)
{
    const auto app = services.store.FindApp(request.PathValue());
    if (const auto refusal = rules::RefusalUnlessCreator(*request.account, app))
        return reply(wire::Refused(*refusal));
    JsonText text;
    text.BeginObject().Key("invitations").BeginArray();
    for (const Invitation& invitation : services.store.InvitationsOf(app->id))
        wire::Append(text, invitation);
    reply(Response::Json(200, text.EndArray().EndObject().Take()));
}

void CreateInvitation(Services& services, const Request& request, const Reply& reply)
{
    const auto order = ReadOrder(request);
    if (const auto* refusal = std::get_if<Refusal>(&order))
        return reply(wire::Refused(*refusal));
    const auto act = [account = *request.account, appId = request.PathValue(),
                      order = std::get<InvitationOrder>(order)](Transaction& store) {
        return AnswerOf(201, rules::CreateInvitation(store, account, appId, order, NowMs()));
    };
    WriteOnce(services.store, request, act, reply);
}

void RevokeInvitation(Services& services, const Request& request, const Reply& reply)
{
    const auto act = [account = *request.account, id = request.PathValue()](Transaction& store) {
        return AnswerOf(200, rules::RevokeInvitation(store, account, id, NowMs()));
    };
    WriteOnce(services.store, request, act, reply);
}

void RedeemInvitation(Services& services, const Request& request, const Reply& reply)
{
    const auto parsed = wire::SmallObject(request);
    if (const auto* refusal = std::get_if<Refusal>(&parsed))
        return reply(wire::Refused(*refusal));
    const QString code = std::get<QJsonObject>(parsed).value(QLatin1String("code")).toString();
    if (code.trimmed().isEmpty() || code.size() > longestTypedCode)
        return reply(wire::BadRequest("bad-code", QStringLiteral("请输入邀请码。")));
    if (const int seconds =
            services.redeemLimit.SecondsToWait(request.account->pin, {}, std::chrono::steady_clock::now()))
        return reply(Response::Refuse(429, "too-many-tries",
                                      QStringLiteral("邀请码尝试过于频繁，请 %1 秒后再试。").arg(seconds))
                         .With("Retry-After", QByteArray::number(seconds)));
    const auto act = [account = *request.account, code](Transaction& store) {
        return AnswerOf(200, rules::RedeemInvitation(store, account, code, NowMs()));
    };
    WriteOnce(services.store, request, act, reply);
}
} // namespace

void AddInvitationRoutes(Router& router, Services& services)
{
    const auto add = [&](const char* method, const char* pattern, qint64 bodyLimit, auto function) {
        router.Add({method, pattern, Access::SignedIn, bodyLimit,
                    [&services, function](const Request& request, const Reply& reply) {
                        function(services, request, reply);
                    }});
    };
    add("GET", "/api/v1/apps/{appId}/invitations", 0, ListInvitations);
    add("POST", "/api/v1/apps/{appId}/invitations", wire::smallBody, CreateInvitation);
    add("DELETE", "/api/v1/invitations/{invitationId}", 0, RevokeInvitation);
    add("POST", "/api/v1/invitations/redeem", wire::smallBody, RedeemInvitation);
}
} // namespace server
