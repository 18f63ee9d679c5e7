// SPDX-License-Identifier: Apache-2.0

#include "AccountAnswers_p.h"
#include "ReleaseAnswers_p.h"

#include <RpaServiceClient/ServiceRoutes.h>

#include <QJsonArray>

#include <algorithm>

namespace
{
QString Text(const QJsonObject& json, const char* name)
{
    return json.value(QLatin1String(name)).toString();
}

qint64 Number(const QJsonObject& json, const char* name)
{
    return qint64(json.value(QLatin1String(name)).toDouble());
}

QDateTime Time(const QJsonObject& json, const char* name)
{
    return QDateTime::fromMSecsSinceEpoch(Number(json, name), Qt::UTC);
}

template <typename Record>
std::optional<QVector<Record>> ReadList(const QJsonValue& list,
                                        std::optional<Record> (*read)(const QJsonObject& json))
{
    if (!list.isArray())
        return std::nullopt;
    QVector<Record> records;
    for (const QJsonValue& entry : list.toArray()) {
        const auto record = read(entry.toObject());
        if (!record)
            return std::nullopt;
        records.append(*record);
    }
    return records;
}

std::optional<VersionServiceAuditEntry> ReadAuditEntry(const QJsonObject& json)
{
    VersionServiceAuditEntry entry;
    entry.id = Text(json, "id");
    entry.at = Time(json, "at");
    entry.pin = Text(json, "pin");
    entry.act = Text(json, "act");
    entry.appId = Text(json, "appId");
    entry.versionId = Text(json, "versionId");
    entry.detail = Text(json, "detail");
    entry.reason = Text(json, "reason");
    if (!ServiceRoutes::IsValidId(entry.id) || entry.act.isEmpty())
        return std::nullopt;
    return entry;
}

std::optional<VersionServiceRelease> ReadRelease(const QJsonObject& json)
{
    const QJsonObject version = json.value(QLatin1String("version")).toObject();
    VersionServiceRelease release;
    release.versionId = Text(version, "id");
    release.versionName = Text(version, "name");
    release.description = Text(version, "description");
    release.state = version.value(QLatin1String("state")).toInt();
    release.releasedAt = Time(json, "releasedAt");
    release.present = json.value(QLatin1String("present")).toBool();
    release.withdrawn = Number(version, "withdrawnAt") != 0;
    if (!ServiceRoutes::IsValidId(release.versionId) || (release.state != 2 && release.state != 3))
        return std::nullopt;
    return release;
}

std::optional<VersionServiceSave> ReadSave(const QJsonObject& json)
{
    VersionServiceSave save;
    save.versionId = Text(json, "versionId");
    save.revision = json.value(QLatin1String("revision")).toInt();
    save.pin = Text(json, "pin");
    save.name = Text(json, "name");
    save.savedAt = Time(json, "savedAt");
    save.note = Text(json, "note");
    if (!ServiceRoutes::IsValidId(save.versionId) || save.revision < 1)
        return std::nullopt;
    return save;
}
} // namespace

std::optional<VersionServiceReleasedApp> ReleaseAnswers::ReadReleasedApp(const QJsonObject& json)
{
    const auto app = AccountAnswers::ReadApp(json.value(QLatin1String("app")).toObject());
    const QJsonObject version = json.value(QLatin1String("version")).toObject();
    if (!app)
        return std::nullopt;
    VersionServiceReleasedApp released;
    released.app = *app;
    released.versionId = Text(version, "id");
    released.versionName = Text(version, "name");
    released.description = Text(version, "description");
    released.state = version.value(QLatin1String("state")).toInt();
    released.releasedAt = Time(json, "releasedAt");
    if (!ServiceRoutes::IsValidId(released.versionId) || (released.state != 2 && released.state != 3))
        return std::nullopt;
    return released;
}

std::optional<QVector<VersionServiceReleasedApp>> ReleaseAnswers::ReadReleasedApps(const QJsonObject& json)
{
    return ReadList(json.value(QLatin1String("apps")), ReadReleasedApp);
}

std::optional<QVector<VersionServiceRelease>> ReleaseAnswers::ReadReleases(const QJsonObject& json)
{
    const auto releases = ReadList(json.value(QLatin1String("releases")), ReadRelease);
    // Users have one version of a state; whoever is told of two would take back the wrong one.
    const auto count = [&releases](int state) {
        return std::count_if(releases->cbegin(), releases->cend(), [state](const auto& release) {
            return release.present && release.state == state;
        });
    };
    return releases && count(2) < 2 && count(3) < 2 ? releases : std::nullopt;
}

std::optional<QVector<VersionServiceSave>> ReleaseAnswers::ReadSaves(const QJsonObject& json)
{
    return ReadList(json.value(QLatin1String("saves")), ReadSave);
}

std::optional<QString> ReleaseAnswers::ReadTakenBack(const QJsonObject& json)
{
    const QJsonValue id = json.value(QLatin1String("versionId"));
    const bool isUsable =
        id.isString() && (id.toString().isEmpty() || ServiceRoutes::IsValidId(id.toString()));
    return isUsable ? std::optional(id.toString()) : std::nullopt;
}

std::optional<VersionServiceInvitation> ReleaseAnswers::ReadInvitation(const QJsonObject& json)
{
    VersionServiceInvitation invitation;
    invitation.id = Text(json, "id");
    invitation.code = Text(json, "code");
    invitation.appId = Text(json, "appId");
    invitation.createdAt = Time(json, "createdAt");
    invitation.expiresAt = Time(json, "expiresAt");
    invitation.mostUses = json.value(QLatin1String("mostUses")).toInt(-1);
    invitation.uses = json.value(QLatin1String("uses")).toInt(-1);
    invitation.revoked = Number(json, "revokedAt") != 0;
    if (!ServiceRoutes::IsValidId(invitation.id) || invitation.code.isEmpty() || invitation.mostUses < 0 ||
        invitation.uses < 0)
        return std::nullopt;
    return invitation;
}

std::optional<QVector<VersionServiceInvitation>> ReleaseAnswers::ReadInvitations(const QJsonObject& json)
{
    return ReadList(json.value(QLatin1String("invitations")), ReadInvitation);
}

std::optional<QVector<VersionServiceAuditEntry>> ReleaseAnswers::ReadAudit(const QJsonObject& json)
{
    return ReadList(json.value(QLatin1String("entries")), ReadAuditEntry);
}
