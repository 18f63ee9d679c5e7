// SPDX-License-Identifier: Apache-2.0

#include "InvitationRules.h"

#include "../base/Clock.h"
#include "../base/Ids.h"

#include <algorithm>

namespace server::rules
{
namespace
{
constexpr int mostOpenOfAnApp = 20;

Invitation Insert(Transaction& store, const Version& gray, const Account& account,
                  const InvitationOrder& order, qint64 now)
{
    Invitation invitation{NewId(), NewInvitationCode(),           gray.appId,     gray.id, account.pin,
                          now,     now + order.validDays * dayMs, order.mostUses, 0,       0};
    store.InsertInvitation(invitation);
    store.Note(
        {{}, now, account.pin, QStringLiteral("invitation.create"), gray.appId, gray.id, invitation.id});
    return invitation;
}

auto CountOpen(Transaction& store, const QString& appId, qint64 now)
{
    const auto all = store.InvitationsOf(appId);
    return std::count_if(all.begin(), all.end(), [now](const Invitation& one) { return one.IsOpen(now); });
}

// People type small letters, blanks and the dash or leave it out.
QString Normalised(const QString& typed)
{
    QString code = typed.toUpper();
    code.remove(QLatin1Char('-'));
    code.remove(QLatin1Char(' '));
    return code;
}

void RequireOpen(const Invitation& invitation, qint64 now)
{
    if (invitation.revokedAt != 0)
        throw refusals::InvitationClosed(QStringLiteral("邀请码已停用，请向应用创建者索取新的邀请码。"));
    if (now >= invitation.expiresAt)
        throw refusals::InvitationClosed(QStringLiteral("邀请码已过期，请向应用创建者索取新的邀请码。"));
    if (invitation.uses >= invitation.mostUses)
        throw refusals::InvitationClosed(
            QStringLiteral("邀请码的使用次数已用完，请向应用创建者索取新的邀请码。"));
}
} // namespace

void RequireCreator(const Account& account, const App& app)
{
    if (app.creator != account.pin)
        throw refusals::Forbidden();
}

Invitation CreateInvitation(Transaction& store, const Account& account, const QString& appId,
                            const InvitationOrder& order, qint64 now)
{
    RequireCreator(account, EditableApp(store, account, appId));
    const auto gray = store.NewestReleased(appId, VersionState::Gray);
    if (!gray)
        throw refusals::NoGrayVersion();
    if (CountOpen(store, appId, now) >= mostOpenOfAnApp)
        throw refusals::TooManyInvitations();
    return Insert(store, *gray, account, order, now);
}

Invitation RevokeInvitation(Transaction& store, const Account& account, const QString& invitationId,
                            qint64 now)
{
    auto invitation = store.FindInvitation(invitationId);
    if (!invitation)
        throw refusals::NotFound();
    RequireCreator(account, EditableApp(store, account, invitation->appId));
    if (invitation->revokedAt != 0)
        return *invitation;
    store.RevokeInvitation(invitationId, now);
    store.Note({{},
                now,
                account.pin,
                QStringLiteral("invitation.revoke"),
                invitation->appId,
                invitation->versionId,
                invitationId});
    invitation->revokedAt = now;
    return *invitation;
}

ReleasedApp RedeemInvitation(Transaction& store, const Account& account, const QString& code, qint64 now)
{
    const auto invitation = store.FindInvitationByCode(Normalised(code));
    const auto app = invitation ? store.FindApp(invitation->appId) : std::nullopt;
    if (!app)
        throw refusals::BadInvitation();
    const auto gray = store.NewestReleased(app->id, VersionState::Gray);
    if (!gray)
        throw refusals::NoGrayVersion();
    ReleasedApp released{*app, *gray, gray->changedAt};
    if (store.HasGrayAccess(app->id, account.pin))
        return released;
    RequireOpen(*invitation, now);
    store.GrantGrayAccess(*invitation, account.pin, now);
    store.Note(
        {{}, now, account.pin, QStringLiteral("invitation.redeem"), app->id, gray->id, invitation->id});
    return released;
}

void KeepAnInvitation(Transaction& store, const Version& gray, const Account& account, qint64 now)
{
    if (CountOpen(store, gray.appId, now) == 0)
        Insert(store, gray, account, {}, now);
}
} // namespace server::rules
