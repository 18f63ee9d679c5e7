#include "SqlRecords.h"

namespace server
{
const QString accountColumns = QStringLiteral("pin, name, vender_id, roles");
const QString appColumns =
    QStringLiteral("app.id, app.name, app.kind, app.creator, account.name, app.vender_id, app.oxs_app_key, "
                   "app.created_at, app.changed_at");
const QString appTables = QStringLiteral("app JOIN account ON account.pin = app.creator");
const QString versionColumns =
    QStringLiteral("id, app_id, name, description, state, api_version, pin, revision, "
                   "sha256, size, created_at, changed_at, deleted_at");

Account ReadAccount(const SqlRows& rows)
{
    return {rows.Text(0), rows.Text(1), rows.Text(2),
            rows.Text(3).split(QLatin1Char(','), Qt::SkipEmptyParts)};
}

App ReadApp(const SqlRows& rows)
{
    return {rows.Text(0), rows.Text(1),   static_cast<int>(rows.Number(2)),
            rows.Text(3), rows.Text(4),   rows.Text(5),
            rows.Text(6), rows.Number(7), rows.Number(8)};
}

Version ReadVersion(const SqlRows& rows)
{
    Version version;
    version.id = rows.Text(0);
    version.appId = rows.Text(1);
    version.name = rows.Text(2);
    version.description = rows.Text(3);
    version.state = static_cast<VersionState>(rows.Number(4));
    version.apiVersion = rows.Text(5);
    version.pin = rows.Text(6);
    version.revision = rows.Number(7);
    version.sha256 = rows.Bytes(8);
    version.size = rows.Number(9);
    version.createdAt = rows.Number(10);
    version.changedAt = rows.Number(11);
    version.deletedAt = rows.Number(12);
    return version;
}
} // namespace server
