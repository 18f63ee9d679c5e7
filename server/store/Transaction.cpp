// SPDX-License-Identifier: Apache-2.0

#include "Transaction.h"

#include "../base/Ids.h"
#include "SqlRecords.h"

namespace server
{
Transaction::Transaction(SqlConnection& theConnection, const IDialect& theDialect,
                         std::vector<QString>& theChangedIds)
    : connection(theConnection), dialect(theDialect), changedIds(theChangedIds)
{
}

std::optional<Account> Transaction::FindAccount(const QString& pin)
{
    static const QString sql = SelectFrom(accountColumns, "account WHERE pin = ?");
    return ReadOne(connection.Select(sql, {pin}), ReadAccount);
}

std::optional<App> Transaction::FindApp(const QString& id)
{
    static const QString sql = SelectApps("app.id = ? AND app.deleted_at = 0");
    return ReadOne(connection.Select(sql, {id}), ReadApp);
}

std::optional<App> Transaction::FindDeletedApp(const QString& id)
{
    static const QString sql = SelectApps("app.id = ? AND app.deleted_at <> 0 AND app.purged_at = 0");
    return ReadOne(connection.Select(sql, {id}), ReadApp);
}

bool Transaction::AppNameTaken(const QString& venderId, const QString& name)
{
    return connection
        .Select(QStringLiteral("SELECT 1 FROM app WHERE vender_id = ? AND name = ? AND deleted_at = 0"),
                {venderId, name})
        .Next();
}

void Transaction::InsertApp(const App& app)
{
    connection.Change(
        QStringLiteral("INSERT INTO app (id, name, kind, creator, vender_id, oxs_app_key, created_at, "
                       "changed_at, changed_by, tags) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"),
        {app.id, app.name, app.kind, app.creator, app.venderId, app.oxsAppKey, app.createdAt, app.changedAt,
         app.changedBy, app.tags.join(QLatin1Char('\n'))});
}

void Transaction::ChangeApp(const App& app)
{
    changedIds.push_back(app.id);
    connection.Change(
        QStringLiteral("UPDATE app SET name = ?, tags = ?, changed_at = ?, changed_by = ? WHERE id = ?"),
        {app.name, app.tags.join(QLatin1Char('\n')), app.changedAt, app.changedBy, app.id});
}

void Transaction::SetAppDeleted(const QString& id, qint64 deletedAt, const QString& pin)
{
    changedIds.push_back(id);
    connection.Change(QStringLiteral("UPDATE app SET deleted_at = ?, deleted_by = ? WHERE id = ?"),
                      {deletedAt, pin, id});
}

void Transaction::PurgeApp(const QString& id, qint64 now)
{
    connection.Change(QStringLiteral("UPDATE app SET purged_at = ? WHERE id = ?"), {now, id});
}

std::optional<Version> Transaction::FindVersion(const QString& id)
{
    const QString sql = SelectFrom(versionColumns, "version WHERE id = ?") + dialect.ForUpdate();
    return ReadOne(connection.Select(sql, {id}), ReadVersion);
}

bool Transaction::DevelopNameTaken(const QString& appId, const QString& name, const QString& exceptVersionId)
{
    return connection
        .Select(QStringLiteral(
                    "SELECT 1 FROM version WHERE app_id = ? AND name = ? AND state = 1 AND deleted_at = 0 "
                    "AND id <> ?"),
                {appId, name, exceptVersionId})
        .Next();
}

std::vector<Version> Transaction::VersionsOf(const QString& appId)
{
    return ReadAll(
        connection.Select(
            SelectFrom(versionColumns, "version WHERE app_id = ? AND deleted_at = 0 ORDER BY position"),
            {appId}),
        ReadVersion);
}

void Transaction::InsertVersion(const Version& version, const QByteArray& body)
{
    InsertHead(version);
    InsertRevision(version, body);
}

void Transaction::InsertCopy(const Version& copy, const Version& original)
{
    InsertHead(copy);
    connection.Change(
        QStringLiteral("INSERT INTO revision (version_id, revision, name, description, api_version, pin, "
                       "sha256, size, saved_at, body) SELECT ?, ?, ?, ?, api_version, ?, sha256, size, ?, "
                       "body FROM revision WHERE version_id = ? AND revision = ?"),
        {copy.id, copy.revision, copy.name, copy.description, copy.pin, copy.changedAt, original.id,
         original.revision});
}

void Transaction::InsertHead(const Version& version)
{
    connection.Change(
        QStringLiteral("INSERT INTO version (id, app_id, name, description, state, api_version, pin, "
                       "revision, sha256, size, created_at, changed_at, deleted_at, deleted_by, position) "
                       "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, 0, '', %1)")
            .arg(dialect.NextPosition(QStringLiteral("version"))),
        {version.id, version.appId, version.name, version.description, static_cast<int>(version.state),
         version.apiVersion, version.pin, version.revision, version.sha256, version.size, version.createdAt,
         version.changedAt});
    TouchApp(version);
}

void Transaction::AddRevision(const Version& version, const QByteArray& body)
{
    changedIds.push_back(version.id);
    InsertRevision(version, body);
    connection.Change(
        QStringLiteral("UPDATE version SET name = ?, description = ?, api_version = ?, pin = ?, "
                       "revision = ?, sha256 = ?, size = ?, changed_at = ? WHERE id = ?"),
        {version.name, version.description, version.apiVersion, version.pin, version.revision, version.sha256,
         version.size, version.changedAt, version.id});
    TouchApp(version);
}

void Transaction::InsertRevision(const Version& version, const QByteArray& body)
{
    connection.Change(
        QStringLiteral("INSERT INTO revision (version_id, revision, name, description, api_version, pin, "
                       "sha256, size, saved_at, body) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"),
        {version.id, version.revision, version.name, version.description, version.apiVersion, version.pin,
         version.sha256, version.size, version.changedAt, body});
}

void Transaction::TouchApp(const Version& changed)
{
    changedIds.push_back(changed.appId);
    connection.Change(QStringLiteral("UPDATE app SET changed_at = ?, changed_by = ? WHERE id = ?"),
                      {changed.changedAt, changed.pin, changed.appId});
}

std::optional<QString> Transaction::WhoSaved(const QString& versionId, qint64 revision)
{
    auto rows =
        connection.Select(QStringLiteral("SELECT pin FROM revision WHERE version_id = ? AND revision = ?"),
                          {versionId, revision});
    return rows.Next() ? std::optional(rows.Text(0)) : std::nullopt;
}

void Transaction::SetNote(const QString& versionId, qint64 revision, const QString& note, qint64 now)
{
    connection.Change(QStringLiteral("INSERT INTO save_note (version_id, revision, note, noted_at) "
                                     "VALUES (?, ?, ?, ?) ON CONFLICT (version_id, revision) DO UPDATE SET "
                                     "note = excluded.note, noted_at = excluded.noted_at"),
                      {versionId, revision, note, now});
}

void Transaction::SetDeleted(const Version& version, qint64 deletedAt, const QString& pin)
{
    changedIds.insert(changedIds.end(), {version.id, version.appId});
    connection.Change(QStringLiteral("UPDATE version SET deleted_at = ?, deleted_by = ? WHERE id = ?"),
                      {deletedAt, pin, version.id});
}

std::optional<StoredAnswer> Transaction::FindAnswer(const QString& pin, const QByteArray& key)
{
    auto rows = connection.Select(QStringLiteral("SELECT fingerprint, status, etag, body FROM answer "
                                                 "WHERE pin = ? AND idempotency_key = ?"),
                                  {pin, QString::fromLatin1(key)});
    if (!rows.Next())
        return std::nullopt;
    return StoredAnswer{rows.Bytes(0), static_cast<int>(rows.Number(1)), rows.Text(2).toLatin1(),
                        rows.Text(3).toUtf8()};
}

void Transaction::InsertAnswer(const QString& pin, const QByteArray& key, const StoredAnswer& answer,
                               qint64 now)
{
    connection.Change(
        QStringLiteral("INSERT INTO answer (pin, idempotency_key, fingerprint, status, etag, body, "
                       "answered_at) VALUES (?, ?, ?, ?, ?, ?, ?)"),
        {pin, QString::fromLatin1(key), answer.fingerprint, answer.status, QString::fromLatin1(answer.etag),
         QString::fromUtf8(answer.body), now});
}

void Transaction::UpsertAccount(const Account& account, const QByteArray& passwordHash, qint64 now)
{
    connection.Change(
        QStringLiteral("INSERT INTO account (pin, name, vender_id, roles, password_hash, created_at) "
                       "VALUES (?, ?, ?, ?, ?, ?) ON CONFLICT (pin) DO UPDATE SET name = excluded.name, "
                       "vender_id = excluded.vender_id, roles = excluded.roles, "
                       "password_hash = excluded.password_hash"),
        {account.pin, account.name, account.venderId, account.roles.join(QLatin1Char(',')), passwordHash,
         now});
}

void Transaction::SetRoles(const QString& pin, const QStringList& roles)
{
    connection.Change(QStringLiteral("UPDATE account SET roles = ? WHERE pin = ?"),
                      {roles.join(QLatin1Char(',')), pin});
}

void Transaction::SetClosed(const QString& pin, qint64 closedAt)
{
    connection.Change(QStringLiteral("UPDATE account SET closed_at = ? WHERE pin = ?"), {closedAt, pin});
}

void Transaction::InsertSession(const StoredSession& session)
{
    connection.Change(
        QStringLiteral("INSERT INTO session (token_hash, pin, created_at, last_used_at, expires_at) "
                       "VALUES (?, ?, ?, ?, ?)"),
        {session.tokenHash, session.pin, session.createdAt, session.lastUsedAt, session.expiresAt});
}

void Transaction::TouchSession(const QByteArray& tokenHash, qint64 now)
{
    connection.Change(QStringLiteral("UPDATE session SET last_used_at = ? WHERE token_hash = ?"),
                      {now, tokenHash});
}

void Transaction::RemoveSession(const QByteArray& tokenHash)
{
    connection.Change(QStringLiteral("DELETE FROM session WHERE token_hash = ?"), {tokenHash});
}

void Transaction::RemoveSessionsOf(const QString& pin)
{
    connection.Change(QStringLiteral("DELETE FROM session WHERE pin = ?"), {pin});
}

qint64 Transaction::UsageOn(const QString& pin, qint64 day)
{
    auto rows = connection.Select(
        QStringLiteral("SELECT COUNT(*) FROM usage_event WHERE pin = ? AND day = ?"), {pin, day});
    return rows.Next() ? rows.Number(0) : 0;
}

bool Transaction::InsertUsage(const QString& pin, const UsageEvent& event)
{
    return connection.Change(QStringLiteral("INSERT INTO usage_event (pin, id, event, day) "
                                            "VALUES (?, ?, ?, ?) ON CONFLICT (pin, id) DO NOTHING"),
                             {pin, event.id, event.event, event.day}) > 0;
}

bool Transaction::RemoveOutdated(qint64 sessionsExpiredBefore, qint64 answersOlderThan, qint64 usageBeforeDay)
{
    constexpr int most = 1000;
    const int sessions =
        connection.Change(QStringLiteral("DELETE FROM session WHERE token_hash IN "
                                         "(SELECT token_hash FROM session WHERE expires_at < ? LIMIT 1000)"),
                          {sessionsExpiredBefore});
    const int answers = connection.Change(
        QStringLiteral("DELETE FROM answer WHERE (pin, idempotency_key) IN "
                       "(SELECT pin, idempotency_key FROM answer WHERE answered_at < ? LIMIT 1000)"),
        {answersOlderThan});
    const int events =
        connection.Change(QStringLiteral("DELETE FROM usage_event WHERE (pin, id) IN "
                                         "(SELECT pin, id FROM usage_event WHERE day < ? LIMIT 1000)"),
                          {usageBeforeDay});
    return sessions < most && answers < most && events < most;
}
} // namespace server
