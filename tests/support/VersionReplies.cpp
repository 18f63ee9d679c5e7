// SPDX-License-Identifier: Apache-2.0

#include "VersionReplies.h"

#include <QCryptographicHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace
{
QJsonObject Record(const VersionReplies::Version& version)
{
    const auto digest = QCryptographicHash::hash(version.content, QCryptographicHash::Sha256).toHex();
    return {{QStringLiteral("id"), version.id},
            {QStringLiteral("appId"), version.appId},
            {QStringLiteral("name"), version.name},
            {QStringLiteral("description"), version.description},
            {QStringLiteral("state"), version.state},
            {QStringLiteral("apiVersion"), version.apiVersion},
            {QStringLiteral("pin"), version.pin},
            {QStringLiteral("revision"), version.revision},
            {QStringLiteral("sha256"), QString::fromLatin1(digest)},
            {QStringLiteral("size"), version.content.size()},
            {QStringLiteral("createdAt"), 1000},
            {QStringLiteral("changedAt"), 2000}};
}

FaultServer::Reply JsonReply(int status, const QJsonObject& body)
{
    return FaultServer::Json(status, QJsonDocument(body).toJson(QJsonDocument::Compact));
}
} // namespace

QByteArray VersionReplies::App(const QByteArray& members)
{
    return R"({"version":"1.0.0",)" + members + (members.isEmpty() ? "" : ",") +
           R"("uiData":{"pages":[]},"processData":{"processes":[]}})";
}

FaultServer::Reply VersionReplies::List(const QVector<Version>& versions)
{
    QJsonArray list;
    for (const Version& version : versions)
        list.append(Record(version));
    return JsonReply(200, {{QStringLiteral("versions"), list}});
}

FaultServer::Reply VersionReplies::Saved(int status, const Version& version)
{
    auto reply = JsonReply(status, Record(version));
    reply.headers.append(qMakePair(QByteArray("ETag"), '"' + QByteArray::number(version.revision) + '"'));
    return reply;
}

FaultServer::Reply VersionReplies::Released(int result, bool needTip, const QString& message,
                                            const Version& version)
{
    return JsonReply(200, {{QStringLiteral("result"), result},
                           {QStringLiteral("needTip"), needTip},
                           {QStringLiteral("message"), message},
                           {QStringLiteral("version"), Record(version)}});
}

FaultServer::Reply VersionReplies::Deleted()
{
    FaultServer::Reply reply;
    reply.status = 204;
    return reply;
}
