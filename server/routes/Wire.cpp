// SPDX-License-Identifier: Apache-2.0

#include "Wire.h"

#include "../http/Percent.h"

#include <WbFoundation/JsonGuard.h>

#include <QJsonDocument>

#include <algorithm>

namespace server::wire
{
JsonText& Append(JsonText& text, const Account& account)
{
    text.BeginObject()
        .Member("pin", account.pin)
        .Member("name", account.name)
        .Member("venderId", account.venderId)
        .Key("roles")
        .BeginArray();
    for (const QString& role : account.roles)
        text.Value(role);
    return text.EndArray().EndObject();
}

JsonText& Append(JsonText& text, const App& app)
{
    text.BeginObject()
        .Member("id", app.id)
        .Member("name", app.name)
        .Member("kind", app.kind)
        .Member("creator", app.creator)
        .Member("creatorName", app.creatorName)
        .Member("oxsAppKey", app.oxsAppKey)
        .Member("createdAt", app.createdAt)
        .Member("changedAt", app.changedAt)
        .Member("changedBy", app.changedBy)
        .Member("changedByName", app.changedByName)
        .Member("state", app.state)
        .Key("tags")
        .BeginArray();
    for (const QString& tag : app.tags)
        text.Value(tag);
    return text.EndArray().EndObject();
}

JsonText& Append(JsonText& text, const Version& version)
{
    return text.BeginObject()
        .Member("id", version.id)
        .Member("appId", version.appId)
        .Member("name", version.name)
        .Member("description", version.description)
        .Member("state", static_cast<int>(version.state))
        .Member("apiVersion", version.apiVersion)
        .Member("pin", version.pin)
        .Member("revision", version.revision)
        .Member("sha256", QString::fromLatin1(version.sha256.toHex()))
        .Member("size", version.size)
        .Member("createdAt", version.createdAt)
        .Member("changedAt", version.changedAt)
        .Member("withdrawnAt", version.withdrawnAt)
        .EndObject();
}

JsonText& Append(JsonText& text, const SavedRevision& save)
{
    return text.BeginObject()
        .Member("versionId", save.versionId)
        .Member("revision", save.revision)
        .Member("pin", save.pin)
        .Member("name", save.name)
        .Member("savedAt", save.savedAt)
        .Member("note", save.note)
        .EndObject();
}

JsonText& Append(JsonText& text, const ReleasedApp& released)
{
    Append(text.BeginObject().Key("app"), released.app);
    Append(text.Key("version"), released.version);
    return text.Member("releasedAt", released.releasedAt).EndObject();
}

JsonText& Append(JsonText& text, const Invitation& invitation)
{
    return text.BeginObject()
        .Member("id", invitation.id)
        .Member("code", invitation.code.left(5) + QLatin1Char('-') + invitation.code.mid(5))
        .Member("appId", invitation.appId)
        .Member("versionId", invitation.versionId)
        .Member("createdAt", invitation.createdAt)
        .Member("expiresAt", invitation.expiresAt)
        .Member("mostUses", invitation.mostUses)
        .Member("uses", invitation.uses)
        .Member("revokedAt", invitation.revokedAt)
        .EndObject();
}

JsonText& Append(JsonText& text, const AuditEntry& entry)
{
    return text.BeginObject()
        .Member("id", entry.id)
        .Member("at", entry.at)
        .Member("pin", entry.pin)
        .Member("act", entry.act)
        .Member("appId", entry.appId)
        .Member("versionId", entry.versionId)
        .Member("detail", entry.detail)
        .Member("reason", entry.reason)
        .EndObject();
}

Response VersionAnswer(int status, const Version& version)
{
    return Answer(status, version).With("ETag", ETag(version.revision));
}

Response Refused(const Refusal& refusal)
{
    return Response::Refuse(refusal.status, refusal.code, refusal.message);
}

QByteArray ETag(qint64 revision)
{
    return '"' + QByteArray::number(revision) + '"';
}

QJsonObject SmallObject(const Request& request)
{
    // The pre-check also keeps the parser away from what it does not stand.
    const QJsonDocument document =
        JsonGuard::Check(request.body) ? QJsonDocument::fromJson(request.body) : QJsonDocument();
    if (!document.isObject())
        throw Refusal{400, "bad-json", QStringLiteral("请求内容不是有效的 JSON 对象。")};
    return document.object();
}

qint64 BasedOnRevision(const Request& request)
{
    const QByteArray header = request.Header("if-match");
    if (header.isEmpty())
        throw Refusal{428, "revision-required",
                      QStringLiteral("请求缺少版本修订号（If-Match），请刷新后重试。")};
    bool isNumber = false;
    const bool quoted = header.size() > 2 && header.startsWith('"') && header.endsWith('"');
    const qint64 revision = header.mid(1, header.size() - 2).toLongLong(&isNumber);
    if (!quoted || !isNumber || revision < 1)
        throw Refusal{400, "bad-revision", QStringLiteral("版本修订号（If-Match）格式不正确。")};
    return revision;
}

QString HeaderText(const Request& request, const char* name)
{
    const QByteArray raw = request.Header(name);
    if (raw.isNull())
        return QString();
    if (auto text = DecodePercent(raw))
        return *text;
    throw Refusal{400, "bad-encoding", QStringLiteral("请求头 %1 的编码不正确。").arg(QLatin1String(name))};
}

bool IsName(const QString& text, int most)
{
    const auto isControl = [](QChar c) { return c.category() == QChar::Other_Control; };
    return text.size() <= most && !text.trimmed().isEmpty() &&
           std::none_of(text.begin(), text.end(), isControl);
}
} // namespace server::wire
