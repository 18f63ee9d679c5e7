// SPDX-License-Identifier: Apache-2.0

#include "SqlRecords.h"

namespace server
{
const QString accountColumns = QStringLiteral("pin, name, vender_id, roles, closed_at");
const QString appColumns = QStringLiteral(
    "app.id, app.name, app.kind, app.creator, account.name, app.vender_id, app.oxs_app_key, "
    "app.created_at, app.changed_at, app.changed_by, changer.name, app.tags, "
    "CASE WHEN EXISTS (SELECT 1 FROM version AS shown WHERE shown.app_id = app.id AND "
    "shown.state = 3 AND shown.deleted_at = 0 AND shown.withdrawn_at = 0) THEN 3 "
    "WHEN EXISTS (SELECT 1 FROM version AS shown WHERE shown.app_id = app.id AND "
    "shown.state = 2 AND shown.deleted_at = 0 AND shown.withdrawn_at = 0) THEN 2 ELSE 1 END, app.deleted_at");
static const QString appTables =
    QStringLiteral("app JOIN account ON account.pin = app.creator "
                   "LEFT JOIN account AS changer ON changer.pin = app.changed_by");
const QString versionColumns =
    QStringLiteral("id, app_id, name, description, state, api_version, pin, revision, "
                   "sha256, size, created_at, changed_at, deleted_at, withdrawn_at");
const QString invitationColumns =
    QStringLiteral("id, code, app_id, version_id, pin, created_at, expires_at, most_uses, uses, revoked_at");
const QString auditColumns = QStringLiteral("audit_entry.id, audit_entry.at, audit_entry.pin, "
                                            "audit_entry.act, audit_entry.app_id, audit_entry.version_id, "
                                            "audit_entry.detail, audit_entry.reason");

namespace
{
constexpr int appColumnCount = 14;
constexpr int versionColumnCount = 14;

Version VersionFrom(const SqlRows& rows, int first)
{
    Version version;
    version.id = rows.Text(first);
    version.appId = rows.Text(first + 1);
    version.name = rows.Text(first + 2);
    version.description = rows.Text(first + 3);
    version.state = static_cast<VersionState>(rows.Number(first + 4));
    version.apiVersion = rows.Text(first + 5);
    version.pin = rows.Text(first + 6);
    version.revision = rows.Number(first + 7);
    version.sha256 = rows.Bytes(first + 8);
    version.size = rows.Number(first + 9);
    version.createdAt = rows.Number(first + 10);
    version.changedAt = rows.Number(first + 11);
    version.deletedAt = rows.Number(first + 12);
    version.withdrawnAt = rows.Number(first + 13);
    return version;
}

QString QualifiedVersionColumns()
{
    QStringList columns = versionColumns.split(QStringLiteral(", "));
    for (QString& column : columns)
        column.prepend(QStringLiteral("version."));
    return columns.join(QStringLiteral(", "));
}
} // namespace

QString SelectFrom(const QString& columns, const char* rest)
{
    return QStringLiteral("SELECT ") + columns + QStringLiteral(" FROM ") + QString::fromLatin1(rest);
}

QString SelectApps(const char* condition)
{
    return QStringLiteral("SELECT ") + appColumns + QStringLiteral(" FROM ") + appTables +
           QStringLiteral(" WHERE ") + QString::fromLatin1(condition);
}

Account ReadAccount(const SqlRows& rows)
{
    return {rows.Text(0), rows.Text(1), rows.Text(2),
            rows.Text(3).split(QLatin1Char(','), Qt::SkipEmptyParts), rows.Number(4)};
}

App ReadApp(const SqlRows& rows)
{
    return {rows.Text(0),
            rows.Text(1),
            static_cast<int>(rows.Number(2)),
            rows.Text(3),
            rows.Text(4),
            rows.Text(5),
            rows.Text(6),
            rows.Number(7),
            rows.Number(8),
            rows.Text(9),
            rows.Text(10),
            rows.Text(11).split(QLatin1Char('\n'), Qt::SkipEmptyParts),
            static_cast<int>(rows.Number(12)),
            rows.Number(13)};
}

Version ReadVersion(const SqlRows& rows)
{
    return VersionFrom(rows, 0);
}

Invitation ReadInvitation(const SqlRows& rows)
{
    return {rows.Text(0),   rows.Text(1),   rows.Text(2),   rows.Text(3),   rows.Text(4),
            rows.Number(5), rows.Number(6), rows.Number(7), rows.Number(8), rows.Number(9)};
}

AuditEntry ReadAuditEntry(const SqlRows& rows)
{
    return {rows.Text(0), rows.Number(1), rows.Text(2), rows.Text(3),
            rows.Text(4), rows.Text(5),   rows.Text(6), rows.Text(7)};
}

QString ReleasedAppsIn(VersionState state, const QString& condition)
{
    return QStringLiteral("SELECT %1, %2, release_entry.released_at FROM %3 "
                          "JOIN version ON version.app_id = app.id "
                          "JOIN release_entry ON release_entry.version_id = version.id "
                          "AND release_entry.to_state = version.state "
                          "WHERE version.state = %4 AND version.deleted_at = 0 AND version.withdrawn_at = 0 "
                          "AND app.deleted_at = 0 AND %5 "
                          "ORDER BY release_entry.position DESC")
        .arg(appColumns, QualifiedVersionColumns(), appTables, QString::number(static_cast<int>(state)),
             condition);
}

QString ReleasesOfApp()
{
    return QStringLiteral("SELECT %1, release_entry.released_at FROM version "
                          "JOIN release_entry ON release_entry.version_id = version.id "
                          "AND release_entry.to_state = version.state "
                          "WHERE version.app_id = ? AND version.deleted_at = 0 "
                          "ORDER BY release_entry.position DESC")
        .arg(QualifiedVersionColumns());
}

QString SavesOfApp()
{
    return QStringLiteral(
        "SELECT revision.version_id, revision.revision, revision.pin, COALESCE(account.name, revision.pin), "
        "revision.saved_at, COALESCE(save_note.note, '') FROM version "
        "JOIN revision ON revision.version_id = version.id "
        "LEFT JOIN save_note ON save_note.version_id = revision.version_id "
        "AND save_note.revision = revision.revision LEFT JOIN account ON account.pin = revision.pin "
        "WHERE version.app_id = ? AND version.deleted_at = 0 "
        "AND (revision.revision > version.revision - 5 OR save_note.note <> '') "
        "ORDER BY version.position DESC, revision.revision DESC");
}

SavedRevision ReadSavedRevision(const SqlRows& rows)
{
    return {rows.Text(0), rows.Number(1), rows.Text(2), rows.Text(3), rows.Number(4), rows.Text(5)};
}

Release ReadRelease(const SqlRows& rows)
{
    return {VersionFrom(rows, 0), rows.Number(versionColumnCount)};
}

ReleasedApp ReadReleasedApp(const SqlRows& rows)
{
    return {ReadApp(rows), VersionFrom(rows, appColumnCount),
            rows.Number(appColumnCount + versionColumnCount)};
}
} // namespace server
