// SPDX-License-Identifier: Apache-2.0

#include "OtherClient.h"

#include <QCryptographicHash>
#include <QEventLoop>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QUuid>

namespace
{
QNetworkRequest Request(const QUrl& service, const QString& path, const QByteArray& token)
{
    QUrl url = service;
    url.setPath(QStringLiteral("/api/v1") + path);
    QNetworkRequest request(url);
    request.setRawHeader("Authorization", "Bearer " + token);
    request.setTransferTimeout(15000);
    return request;
}

QNetworkReply* Finish(QNetworkReply* reply)
{
    QEventLoop loop;
    QObject::connect(reply, &QNetworkReply::finished, &loop, &QEventLoop::quit);
    if (!reply->isFinished())
        loop.exec();
    return reply;
}
} // namespace

OtherClient::OtherClient(const QUrl& origin, const QByteArray& secret) : service(origin), token(secret) {}

OtherClient::Answer OtherClient::Get(const QString& path)
{
    QNetworkAccessManager network;
    QNetworkReply* reply = Finish(network.get(Request(service, path, token)));
    return {reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt(), reply->rawHeader("ETag"),
            reply->readAll()};
}

OtherClient::Answer OtherClient::Put(const QString& path, const QByteArray& body, const QByteArray& etag,
                                     const QString& name, const QString& apiVersion)
{
    QNetworkAccessManager network;
    QNetworkRequest request = Request(service, path, token);
    const QByteArray digest = QCryptographicHash::hash(body, QCryptographicHash::Sha256).toBase64();
    request.setHeader(QNetworkRequest::ContentTypeHeader, QByteArrayLiteral("application/json"));
    request.setRawHeader("Content-Digest", "sha-256=:" + digest + ":");
    request.setRawHeader("If-Match", etag);
    request.setRawHeader("Idempotency-Key", QUuid::createUuid().toByteArray(QUuid::WithoutBraces));
    request.setRawHeader("Version-Name", QUrl::toPercentEncoding(name));
    request.setRawHeader("Version-Description", "");
    request.setRawHeader("Version-Api", apiVersion.toLatin1());
    QNetworkReply* reply = Finish(network.put(request, body));
    return {reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt(), reply->rawHeader("ETag"),
            reply->readAll()};
}

bool OtherClient::OverwriteAs(const QString& appId, const QString& versionId, const QString& apiVersion)
{
    QString name;
    const QJsonObject list =
        QJsonDocument::fromJson(Get(QStringLiteral("/apps/%1/versions").arg(appId)).body).object();
    const QJsonArray versions = list.value(QStringLiteral("versions")).toArray();
    for (const QJsonValue& version : versions)
        if (version.toObject().value(QStringLiteral("id")).toString() == versionId)
            name = version.toObject().value(QStringLiteral("name")).toString();
    const Answer data = Get(QStringLiteral("/versions/%1/data").arg(versionId));
    QJsonObject content = QJsonDocument::fromJson(data.body).object();
    content.insert(QStringLiteral("version"), apiVersion);
    const Answer answer =
        Put(QStringLiteral("/versions/%1").arg(versionId),
            QJsonDocument(content).toJson(QJsonDocument::Compact), data.etag, name, apiVersion);
    problem =
        QStringLiteral("status %1: %2").arg(answer.status).arg(QString::fromUtf8(answer.body.left(300)));
    return answer.status == 200;
}
