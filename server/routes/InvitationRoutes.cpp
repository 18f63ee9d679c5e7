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

InvitationOrder ReadOrder(const Request& request)
{
    const QJsonObject object = wire::SmallObject(request);
    InvitationOrder order;
    // A value that is no number reads as 0.
    order.validDays = object.value(QLatin1String("validDays"))
                          .toInt(object.contains(QLatin1String("validDays")) ? 0 : order.validDays);
    order.mostUses = object.value(QLatin1String("mostUses"))
                         .toInt(object.contains(QLatin1String("mostUses")) ? 0 : order.mostUses);
    if (order.validDays < 1 || order.validDays > 365)
        throw Refusal{400, "bad-valid-days", QStringLiteral("邀请码的有效期应为 1 到 365 天。")};
    if (order.mostUses < 1 || order.mostUses > 10000)
        throw Refusal{400, "bad-most-uses", QStringLiteral("邀请码的使用次数应为 1 到 10000 次。")};
    return order;
}

void ListInvitations(Services& services, const Request& request, const Reply& reply)
{
    const App app = EditableApp(services.store, *request.account, request.PathValue());
    rules::RequireCreator(*request.account, app);
    reply(wire::ListAnswer("invitations", services.store.InvitationsOf(app.id)));
}

void CreateInvitation(Services& services, const Request& request, const Reply& reply)
{
    const auto act = [account = *request.account, appId = request.PathValue(),
                      order = ReadOrder(request)](Transaction& store) {
        return wire::Answer(201, rules::CreateInvitation(store, account, appId, order, NowMs()));
    };
    WriteOnce(services.store, request, act, reply);
}

void RevokeInvitation(Services& services, const Request& request, const Reply& reply)
{
    const auto act = [account = *request.account, id = request.PathValue()](Transaction& store) {
        return wire::Answer(200, rules::RevokeInvitation(store, account, id, NowMs()));
    };
    WriteOnce(services.store, request, act, reply);
}

void RedeemInvitation(Services& services, const Request& request, const Reply& reply)
{
    const QString code = wire::SmallObject(request).value(QLatin1String("code")).toString();
    if (code.trimmed().isEmpty() || code.size() > longestTypedCode)
        throw Refusal{400, "bad-code", QStringLiteral("请输入邀请码。")};
    if (const int seconds =
            services.redeemLimit.SecondsToWait(request.account->pin, {}, std::chrono::steady_clock::now()))
        return reply(Response::Refuse(429, "too-many-tries",
                                      QStringLiteral("邀请码尝试过于频繁，请 %1 秒后再试。").arg(seconds))
                         .With("Retry-After", QByteArray::number(seconds)));
    const auto act = [account = *request.account, code](Transaction& store) {
        return wire::Answer(200, rules::RedeemInvitation(store, account, code, NowMs()));
    };
    WriteOnce(services.store, request, act, reply);
}
} // namespace

void AddInvitationRoutes(Router& router, Services& services)
{
    router.Add(
        {"GET", "/api/v1/apps/{appId}/invitations", Access::SignedIn, 0, Bind(services, ListInvitations)});
    router.Add({"POST", "/api/v1/apps/{appId}/invitations", Access::SignedIn, wire::smallBody,
                Bind(services, CreateInvitation)});
    router.Add({"DELETE", "/api/v1/invitations/{invitationId}", Access::SignedIn, 0,
                Bind(services, RevokeInvitation)});
    router.Add({"POST", "/api/v1/invitations/redeem", Access::SignedIn, wire::smallBody,
                Bind(services, RedeemInvitation)});
}
} // namespace server
