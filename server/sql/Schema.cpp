// SPDX-License-Identifier: Apache-2.0

#include "Schema.h"

#include "SqlConnection.h"

#include <vector>

namespace server
{
namespace
{
// Column types are read by both databases; @BLOB stands for the dialect's type of raw bytes.
const char* const firstSchema[] = {
    "CREATE TABLE account (pin TEXT PRIMARY KEY, name TEXT NOT NULL, vender_id TEXT NOT NULL, roles TEXT NOT "
    "NULL, "
    "password_hash @BLOB, created_at BIGINT NOT NULL)",

    "CREATE TABLE session (token_hash @BLOB PRIMARY KEY, pin TEXT NOT NULL REFERENCES account(pin), "
    "created_at BIGINT NOT NULL, last_used_at BIGINT NOT NULL, expires_at BIGINT NOT NULL)",
    "CREATE INDEX session_of_account ON session(pin)",

    "CREATE TABLE app (id TEXT PRIMARY KEY, name TEXT NOT NULL, kind INTEGER NOT NULL, "
    "creator TEXT NOT NULL REFERENCES account(pin), vender_id TEXT NOT NULL, oxs_app_key TEXT NOT NULL, "
    "created_at BIGINT NOT NULL, changed_at BIGINT NOT NULL)",
    "CREATE UNIQUE INDEX app_name ON app(vender_id, name)",
    "CREATE INDEX app_of_creator ON app(creator)",

    "CREATE TABLE version (id TEXT PRIMARY KEY, app_id TEXT NOT NULL REFERENCES app(id), name TEXT NOT NULL, "
    "description TEXT NOT NULL, state INTEGER NOT NULL, api_version TEXT NOT NULL, pin TEXT NOT NULL, "
    "revision BIGINT NOT NULL, sha256 @BLOB NOT NULL, size BIGINT NOT NULL, created_at BIGINT NOT NULL, "
    "changed_at BIGINT NOT NULL, deleted_at BIGINT NOT NULL, deleted_by TEXT NOT NULL)",
    "CREATE INDEX version_of_app ON version(app_id, created_at)",
    "CREATE UNIQUE INDEX version_name ON version(app_id, name) WHERE state = 1 AND deleted_at = 0",

    "CREATE TABLE revision (version_id TEXT NOT NULL REFERENCES version(id), revision BIGINT NOT NULL, "
    "name TEXT NOT NULL, description TEXT NOT NULL, api_version TEXT NOT NULL, pin TEXT NOT NULL, "
    "sha256 @BLOB NOT NULL, size BIGINT NOT NULL, saved_at BIGINT NOT NULL, body @BLOB NOT NULL, "
    "PRIMARY KEY (version_id, revision))",

    "CREATE TABLE release_entry (id TEXT PRIMARY KEY, version_id TEXT NOT NULL REFERENCES version(id), "
    "revision BIGINT NOT NULL, from_state INTEGER NOT NULL, to_state INTEGER NOT NULL, pin TEXT NOT NULL, "
    "released_at BIGINT NOT NULL)",
    "CREATE INDEX release_of_version ON release_entry(version_id)",

    "CREATE TABLE answer (pin TEXT NOT NULL, idempotency_key TEXT NOT NULL, fingerprint @BLOB NOT NULL, "
    "status INTEGER NOT NULL, etag TEXT NOT NULL, body TEXT NOT NULL, answered_at BIGINT NOT NULL, "
    "PRIMARY KEY (pin, idempotency_key))",
    "CREATE INDEX answer_age ON answer(answered_at)",
};

const char* const invitationSchema[] = {
    "CREATE TABLE invitation (id TEXT PRIMARY KEY, code TEXT NOT NULL, app_id TEXT NOT NULL REFERENCES "
    "app(id), "
    "version_id TEXT NOT NULL REFERENCES version(id), pin TEXT NOT NULL, created_at BIGINT NOT NULL, "
    "expires_at BIGINT NOT NULL, most_uses BIGINT NOT NULL, uses BIGINT NOT NULL, revoked_at BIGINT NOT "
    "NULL)",
    "CREATE UNIQUE INDEX invitation_code ON invitation(code)",
    "CREATE INDEX invitation_of_app ON invitation(app_id)",

    "CREATE TABLE gray_access (app_id TEXT NOT NULL REFERENCES app(id), pin TEXT NOT NULL REFERENCES "
    "account(pin), invitation_id TEXT NOT NULL REFERENCES invitation(id), granted_at BIGINT NOT NULL, "
    "PRIMARY KEY (app_id, pin))",
    "CREATE INDEX gray_access_of_account ON gray_access(pin)",

    "CREATE TABLE audit_entry (id TEXT PRIMARY KEY, at BIGINT NOT NULL, pin TEXT NOT NULL, act TEXT NOT "
    "NULL, "
    "app_id TEXT NOT NULL REFERENCES app(id), version_id TEXT NOT NULL, detail TEXT NOT NULL)",
    "CREATE INDEX audit_of_app ON audit_entry(app_id)",

    "CREATE INDEX version_in_state ON version(state, app_id)",

    // What was released before the audit was kept is known from the releases.
    "INSERT INTO audit_entry (id, at, pin, act, app_id, version_id, detail) "
    "SELECT release_entry.id, release_entry.released_at, release_entry.pin, "
    "CASE release_entry.to_state WHEN 2 THEN 'release.gray' ELSE 'release.online' END, "
    "version.app_id, version.id, version.name "
    "FROM release_entry JOIN version ON version.id = release_entry.version_id",
};

// What came first is only known by the clock of that time.
const std::pair<const char*, const char*> positionedTables[] = {{"version", "created_at"},
                                                                {"release_entry", "released_at"},
                                                                {"invitation", "created_at"},
                                                                {"audit_entry", "at"}};

using Step = void (*)(SqlConnection&, const IDialect&);

void CreateFirstSchema(SqlConnection& connection, const IDialect& dialect)
{
    for (const char* statement : firstSchema)
        connection.Execute(
            QString::fromLatin1(statement).replace(QLatin1String("@BLOB"), dialect.BlobType()));
    for (const QString& statement : dialect.AppendOnly())
        connection.Execute(statement);
}

void AddInvitationsAndAudit(SqlConnection& connection, const IDialect& dialect)
{
    Q_UNUSED(dialect)
    for (const char* statement : invitationSchema)
        connection.Execute(QString::fromLatin1(statement));
}

void AddPositions(SqlConnection& connection, const IDialect& dialect)
{
    for (const auto& [name, time] : positionedTables) {
        const QString table = QString::fromLatin1(name);
        connection.Execute(
            QStringLiteral("ALTER TABLE %1 ADD COLUMN position BIGINT NOT NULL DEFAULT 0").arg(table));
        connection.Execute(QStringLiteral("UPDATE %1 SET position = ranked.place FROM (SELECT id, "
                                          "ROW_NUMBER() OVER (ORDER BY %2, id) AS place FROM %1) AS ranked "
                                          "WHERE ranked.id = %1.id")
                               .arg(table, QString::fromLatin1(time)));
        connection.Execute(QStringLiteral("CREATE UNIQUE INDEX %1_position ON %1(position)").arg(table));
    }
    connection.Execute(QStringLiteral("DROP INDEX version_of_app"));
    connection.Execute(QStringLiteral("CREATE INDEX version_of_app ON version(app_id, position)"));
    for (const QString& statement : dialect.ContinuePositions())
        connection.Execute(statement);
}

void AddClosedAccounts(SqlConnection& connection, const IDialect&)
{
    connection.Execute(QStringLiteral("ALTER TABLE account ADD COLUMN closed_at BIGINT NOT NULL DEFAULT 0"));
}

void AddTakingBack(SqlConnection& connection, const IDialect&)
{
    connection.Execute(
        QStringLiteral("ALTER TABLE version ADD COLUMN withdrawn_at BIGINT NOT NULL DEFAULT 0"));
    connection.Execute(QStringLiteral("ALTER TABLE audit_entry ADD COLUMN reason TEXT NOT NULL DEFAULT ''"));
}

// Revisions themselves never change; what their authors say of them may.
void AddSaveNotes(SqlConnection& connection, const IDialect&)
{
    connection.Execute(
        QStringLiteral("CREATE TABLE save_note (version_id TEXT NOT NULL, revision BIGINT NOT NULL, "
                       "note TEXT NOT NULL, noted_at BIGINT NOT NULL, PRIMARY KEY (version_id, revision), "
                       "FOREIGN KEY (version_id, revision) REFERENCES revision(version_id, revision))"));
}

void AddTagsAndChangers(SqlConnection& connection, const IDialect&)
{
    connection.Execute(QStringLiteral("ALTER TABLE app ADD COLUMN changed_by TEXT NOT NULL DEFAULT ''"));
    connection.Execute(QStringLiteral("ALTER TABLE app ADD COLUMN tags TEXT NOT NULL DEFAULT ''"));
    connection.Execute(
        QStringLiteral("UPDATE app SET changed_by = COALESCE((SELECT pin FROM version WHERE "
                       "version.app_id = app.id ORDER BY version.changed_at DESC LIMIT 1), creator)"));
}

// The names of deleted apps are free again. What was taken out of the bin, too, stays out of reach for good.
void AddBin(SqlConnection& connection, const IDialect&)
{
    for (const char* statement :
         {"ALTER TABLE app ADD COLUMN deleted_at BIGINT NOT NULL DEFAULT 0",
          "ALTER TABLE app ADD COLUMN deleted_by TEXT NOT NULL DEFAULT ''",
          "ALTER TABLE app ADD COLUMN purged_at BIGINT NOT NULL DEFAULT 0", "DROP INDEX app_name",
          "CREATE UNIQUE INDEX app_name ON app(vender_id, name) WHERE deleted_at = 0"})
        connection.Execute(QString::fromLatin1(statement));
}

// A row per event and not a number per day: an event that comes twice counts once.
void AddUsage(SqlConnection& connection, const IDialect&)
{
    for (const char* statement :
         {"CREATE TABLE usage_event (pin TEXT NOT NULL REFERENCES account(pin), id TEXT NOT NULL, "
          "event TEXT NOT NULL, day BIGINT NOT NULL, PRIMARY KEY (pin, id))",
          "CREATE INDEX usage_of_account ON usage_event(pin, day)",
          "CREATE INDEX usage_of_day ON usage_event(day)"})
        connection.Execute(QString::fromLatin1(statement));
}

// Step n leads from schema n to schema n + 1. Steps that have been published are never changed.
const Step steps[] = {CreateFirstSchema, AddInvitationsAndAudit, AddPositions,       AddClosedAccounts,
                      AddTakingBack,     AddSaveNotes,           AddTagsAndChangers, AddBin,
                      AddUsage};
constexpr int stepCount = sizeof steps / sizeof steps[0];

int StoredSchema(SqlConnection& connection)
{
    connection.Execute(QStringLiteral("CREATE TABLE IF NOT EXISTS schema_info (version INTEGER NOT NULL)"));
    auto rows = connection.Select(QStringLiteral("SELECT version FROM schema_info"), {});
    return rows.Next() ? rows.Value(0).toInt() : 0;
}

void SetStoredSchema(SqlConnection& connection, int version)
{
    connection.Execute(QStringLiteral("DELETE FROM schema_info"));
    connection.Change(QStringLiteral("INSERT INTO schema_info (version) VALUES (?)"), {version});
}
} // namespace

int CurrentSchema()
{
    return stepCount;
}

void MigrateSchema(SqlConnection& connection, const IDialect& dialect)
{
    connection.Execute(dialect.BeginWrite());
    try {
        for (const QString& statement : dialect.LockForMigration())
            connection.Execute(statement);
        const int stored = StoredSchema(connection);
        if (stored > stepCount)
            throw StoreError(
                StoreFault::Internal,
                QStringLiteral("the store has schema %1, this server knows %2").arg(stored).arg(stepCount));
        for (int i = stored; i < stepCount; ++i)
            steps[i](connection, dialect);
        if (stored < stepCount)
            SetStoredSchema(connection, stepCount);
        connection.Execute(QStringLiteral("COMMIT"));
    } catch (...) {
        connection.TryExecute(QStringLiteral("ROLLBACK"));
        throw;
    }
}
} // namespace server
