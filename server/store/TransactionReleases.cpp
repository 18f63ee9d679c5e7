// SPDX-License-Identifier: Apache-2.0

// Releases, invitations and the notes of who did what.
#include "../base/Ids.h"
#include "SqlRecords.h"
#include "Transaction.h"

namespace server
{
void Transaction::Release(const Version& version, VersionState to, const QString& pin, qint64 now)
{
    changedIds.insert(changedIds.end(), {version.id, version.appId});
    connection.Change(
        QStringLiteral("UPDATE version SET state = ?, changed_at = ?, withdrawn_at = 0 WHERE id = ?"),
        {static_cast<int>(to), now, version.id});
    connection.Change(
        QStringLiteral("INSERT INTO release_entry (id, version_id, revision, from_state, to_state, pin, "
                       "released_at, position) VALUES (?, ?, ?, ?, ?, ?, ?, %1)")
            .arg(dialect.NextPosition(QStringLiteral("release_entry"))),
        {NewId(), version.id, version.revision, static_cast<int>(version.state), static_cast<int>(to), pin,
         now});
}

std::optional<Version> Transaction::NewestReleased(const QString& appId, VersionState state)
{
    const QString sql = SelectFrom(
        versionColumns, "version WHERE app_id = ? AND state = ? AND deleted_at = 0 AND "
                        "withdrawn_at = 0 ORDER BY (SELECT MAX(release_entry.position) FROM release_entry "
                        "WHERE release_entry.version_id = version.id) DESC LIMIT 1");
    return ReadOne(connection.Select(sql, {appId, static_cast<int>(state)}), ReadVersion);
}

void Transaction::WithdrawAll(const QString& appId, VersionState state, qint64 now)
{
    const std::vector<QVariant> those{appId, static_cast<int>(state)};
    auto rows = connection.Select(QStringLiteral("SELECT id FROM version WHERE app_id = ? AND state = ? "
                                                 "AND withdrawn_at = 0"),
                                  those);
    while (rows.Next())
        changedIds.push_back(rows.Text(0));
    changedIds.push_back(appId);
    connection.Change(QStringLiteral("UPDATE version SET withdrawn_at = ? WHERE app_id = ? AND state = ? "
                                     "AND withdrawn_at = 0"),
                      {now, appId, static_cast<int>(state)});
}

void Transaction::InsertInvitation(const Invitation& invitation)
{
    connection.Change(QStringLiteral("INSERT INTO invitation (") + invitationColumns +
                          QStringLiteral(", position) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, %1)")
                              .arg(dialect.NextPosition(QStringLiteral("invitation"))),
                      {invitation.id, invitation.code, invitation.appId, invitation.versionId, invitation.pin,
                       invitation.createdAt, invitation.expiresAt, invitation.mostUses, invitation.uses,
                       invitation.revokedAt});
}

std::optional<Invitation> Transaction::FindInvitation(const QString& id)
{
    const QString sql = SelectFrom(invitationColumns, "invitation WHERE id = ?") + dialect.ForUpdate();
    return ReadOne(connection.Select(sql, {id}), ReadInvitation);
}

std::optional<Invitation> Transaction::FindInvitationByCode(const QString& code)
{
    const QString sql = SelectFrom(invitationColumns, "invitation WHERE code = ?") + dialect.ForUpdate();
    return ReadOne(connection.Select(sql, {code}), ReadInvitation);
}

std::vector<Invitation> Transaction::InvitationsOf(const QString& appId)
{
    return ReadAll(connection.Select(SelectFrom(invitationColumns, "invitation WHERE app_id = ?"), {appId}),
                   ReadInvitation);
}

void Transaction::RevokeInvitation(const QString& id, qint64 now)
{
    connection.Change(QStringLiteral("UPDATE invitation SET revoked_at = ? WHERE id = ?"), {now, id});
}

bool Transaction::HasGrayAccess(const QString& appId, const QString& pin)
{
    return connection
        .Select(QStringLiteral("SELECT 1 FROM gray_access WHERE app_id = ? AND pin = ?"), {appId, pin})
        .Next();
}

void Transaction::GrantGrayAccess(const Invitation& invitation, const QString& pin, qint64 now)
{
    connection.Change(QStringLiteral("INSERT INTO gray_access (app_id, pin, invitation_id, granted_at) "
                                     "VALUES (?, ?, ?, ?)"),
                      {invitation.appId, pin, invitation.id, now});
    connection.Change(QStringLiteral("UPDATE invitation SET uses = uses + 1 WHERE id = ?"), {invitation.id});
}

void Transaction::Note(const AuditEntry& entry)
{
    connection.Change(
        QStringLiteral("INSERT INTO audit_entry (id, at, pin, act, app_id, version_id, detail, "
                       "reason, position) VALUES (?, ?, ?, ?, ?, ?, ?, ?, %1)")
            .arg(dialect.NextPosition(QStringLiteral("audit_entry"))),
        {NewId(), entry.at, entry.pin, entry.act, entry.appId, entry.versionId, entry.detail, entry.reason});
}
} // namespace server
