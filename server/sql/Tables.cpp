// SPDX-License-Identifier: Apache-2.0

#include "Tables.h"

namespace server
{
namespace
{
QStringList Words(const char* text)
{
    return QString::fromLatin1(text).split(QLatin1Char(' '));
}

Table MakeTable(const char* name, int keyColumns, const char* columns)
{
    const QStringList all = Words(columns);
    return {QString::fromLatin1(name), all.mid(0, keyColumns), all};
}
} // namespace

const QString& RevisionTable()
{
    static const QString name = QStringLiteral("revision");
    return name;
}

const std::vector<Table>& Tables()
{
    static const std::vector<Table> tables{
        MakeTable("account", 1, "pin name vender_id roles password_hash created_at closed_at"),
        MakeTable("session", 1, "token_hash pin created_at last_used_at expires_at"),
        MakeTable("app", 1,
                  "id name kind creator vender_id oxs_app_key created_at changed_at changed_by tags "
                  "deleted_at deleted_by purged_at"),
        MakeTable(
            "version", 1,
            "id app_id name description state api_version pin revision sha256 size created_at changed_at "
            "deleted_at deleted_by position withdrawn_at"),
        MakeTable("revision", 2, "version_id revision name description api_version pin sha256 size saved_at"),
        MakeTable("save_note", 2, "version_id revision note noted_at"),
        MakeTable("release_entry", 1, "id version_id revision from_state to_state pin released_at position"),
        MakeTable("invitation", 1,
                  "id code app_id version_id pin created_at expires_at most_uses uses revoked_at position"),
        MakeTable("gray_access", 2, "app_id pin invitation_id granted_at"),
        MakeTable("audit_entry", 1, "id at pin act app_id version_id detail position reason"),
        MakeTable("usage_event", 2, "pin id event day"),
        MakeTable("answer", 2, "pin idempotency_key fingerprint status etag body answered_at"),
    };
    return tables;
}
} // namespace server
