// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "AppRules.h"

namespace server
{
// What the creator asks for.
struct InvitationOrder
{
    int validDays = 30; // 1 to 365
    int mostUses = 100; // 1 to 10000
};

// The rules of invitations; each runs inside a write of the store. An invitation opens the gray versions of
// its app, the present one and those to come, to the account that redeems it. Revoking one keeps others from
// redeeming it; whoever did keeps what he has.
namespace rules
{
// Only the creator of an app gives invitations away.
Invitation CreateInvitation(Transaction& store, const Account& account, const QString& appId,
                            const InvitationOrder& order, qint64 now);
Invitation RevokeInvitation(Transaction& store, const Account& account, const QString& invitationId,
                            qint64 now);

// `code` as the user typed it. A second time changes nothing.
ReleasedApp RedeemInvitation(Transaction& store, const Account& account, const QString& code, qint64 now);

// Makes an invitation when the app of the gray version has no open one.
void KeepAnInvitation(Transaction& store, const Version& gray, const Account& account, qint64 now);

// Of an app that the account may edit.
void RequireCreator(const Account& account, const App& app);
} // namespace rules
} // namespace server
