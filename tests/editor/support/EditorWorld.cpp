// SPDX-License-Identifier: Apache-2.0

#include "EditorWorld.h"

#include <RpaAppData/RpaAppData.h>
#include <RpaAppData/RpaAppExtendInfo.h>
#include <RpaCore/RpaGlobalDataManager.h>
#include <RpaCore/RpaSuperDir.h>
#include <RpaServiceClient/VersionServiceSettings.h>
#include <WbCore/WbGlobalData.h>

#include <QCryptographicHash>
#include <QEventLoop>
#include <QJsonArray>
#include <QJsonDocument>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QUuid>

namespace
{
const QString author = QStringLiteral("author-1");
}

void EditorWorld::Start()
{
    if (!server.Start())
        qFatal("no version server: %s", server.ErrorText());
}

void EditorWorld::SignIn()
{
    UseServer(QUrl(server.BaseUrl()));
    WbGlobalData::Instance()->SetPin(author);
    WbGlobalData::Instance()->SetVenderId(9007199254740993);
    RpaGlobalDataManager::Instance()->SetSuperAdmin(false);
    RpaGlobalDataManager::Instance()->SetApiVersion(QLatin1String(ownApiVersion));
    RpaSuperDir::Instance()->SetTemplateDirs(QString(), QString());
}

void EditorWorld::UseServer(const QUrl& url)
{
    auto* settings = VersionServiceSettings::Instance();
    settings->SetBaseUrl(url);
    settings->SetToken(server.Token(author));
    WbHttpLimits limits;
    limits.connect = std::chrono::seconds(2);
    limits.inactivity = std::chrono::milliseconds(500);
    limits.total = std::chrono::seconds(3);
    settings->SetLimits(limits);
    settings->SetRepeatSpacing({std::chrono::milliseconds(1), std::chrono::milliseconds(20)});
}

RobotExecuteInfo EditorWorld::CreateApp(int kind)
{
    const QJsonObject body{{QStringLiteral("name"), QStringLiteral("应用%1").arg(++appCount)},
                           {QStringLiteral("kind"), kind}};
    QNetworkRequest request = Request(QStringLiteral("/apps"));
    request.setHeader(QNetworkRequest::ContentTypeHeader, QByteArrayLiteral("application/json"));
    const QJsonObject app =
        QJsonDocument::fromJson(Finish(network.post(request, QJsonDocument(body).toJson()))).object();

    RobotExecuteInfo info;
    info.SetAppId(app.value(QStringLiteral("id")).toString());
    info.SetAppName(app.value(QStringLiteral("name")).toString());
    info.SetCreator(app.value(QStringLiteral("creator")).toString());
    info.SetOxsAppKey(app.value(QStringLiteral("oxsAppKey")).toString());
    info.SetAppKind(kind);
    return info;
}

QString EditorWorld::AddVersion(const RobotExecuteInfo& app, const QString& name, const QString& description,
                                const QString& instructions, const QString& apiVersion)
{
    RpaAppData content;
    content.InitDefault();
    content.GetAppExtendInfo()->manual = instructions;
    content.SetVersion(apiVersion);
    return Upload(app, name, description, content);
}

QString EditorWorld::AddVersion(const RobotExecuteInfo& app, const QString& name, const Fill& fill)
{
    RpaAppData content;
    content.InitDefault();
    content.SetVersion(QLatin1String(ownApiVersion));
    fill(content);
    return Upload(app, name, QString(), content);
}

QString EditorWorld::Upload(const RobotExecuteInfo& app, const QString& name, const QString& description,
                            const RpaAppData& content)
{
    content.GetAppExtendInfo()->SetAppId(app.GetAppId());
    content.GetAppExtendInfo()->SetAppKind(app.GetAppKind());
    const QString apiVersion = content.GetVersion();
    const QByteArray json = content.ToJson();

    QNetworkRequest request = Request(QStringLiteral("/apps/%1/versions").arg(app.GetAppId()));
    request.setHeader(QNetworkRequest::ContentTypeHeader, QByteArrayLiteral("application/json"));
    request.setRawHeader("Content-Digest",
                         "sha-256=:" + QCryptographicHash::hash(json, QCryptographicHash::Sha256).toBase64() +
                             ":");
    request.setRawHeader("Version-Name", QUrl::toPercentEncoding(name));
    request.setRawHeader("Version-Description", QUrl::toPercentEncoding(description));
    request.setRawHeader("Version-Api", QUrl::toPercentEncoding(apiVersion));
    return QJsonDocument::fromJson(Finish(network.post(request, json)))
        .object()
        .value(QStringLiteral("id"))
        .toString();
}

void EditorWorld::Release(const QString& versionId, int type)
{
    QNetworkRequest request = Request(QStringLiteral("/versions/%1/release").arg(versionId));
    request.setHeader(QNetworkRequest::ContentTypeHeader, QByteArrayLiteral("application/json"));
    request.setRawHeader("If-Match", "\"1\"");
    const QByteArray answer =
        Finish(network.post(request, QJsonDocument(QJsonObject{{QStringLiteral("type"), type}}).toJson()));
    const QJsonObject released =
        QJsonDocument::fromJson(answer).object().value(QStringLiteral("version")).toObject();
    RobotExecuteInfo app;
    app.SetAppId(released.value(QStringLiteral("appId")).toString());
    for (const QJsonObject& version : ListVersions(app))
        if (version.value(QStringLiteral("createdAt")) == released.value(QStringLiteral("changedAt")))
            Remove(version.value(QStringLiteral("id")).toString());
}

void EditorWorld::Remove(const QString& versionId)
{
    QNetworkRequest request = Request(QStringLiteral("/versions/%1").arg(versionId));
    request.setRawHeader("If-Match", "\"1\"");
    Finish(network.deleteResource(request));
}

QVector<QJsonObject> EditorWorld::ListVersions(const RobotExecuteInfo& app)
{
    const QByteArray answer =
        Finish(network.get(Request(QStringLiteral("/apps/%1/versions").arg(app.GetAppId()))));
    QVector<QJsonObject> versions;
    const QJsonArray array =
        QJsonDocument::fromJson(answer).object().value(QStringLiteral("versions")).toArray();
    for (const QJsonValue& version : array)
        versions.append(version.toObject());
    return versions;
}

QStringList EditorWorld::GetVersionNames(const RobotExecuteInfo& app)
{
    QStringList names;
    const QVector<QJsonObject> versions = ListVersions(app);
    for (const QJsonObject& version : versions)
        names.append(version.value(QStringLiteral("name")).toString());
    return names;
}

QStringList EditorWorld::GetVersionIds(const RobotExecuteInfo& app)
{
    QStringList ids;
    const QVector<QJsonObject> versions = ListVersions(app);
    for (const QJsonObject& version : versions)
        ids.append(version.value(QStringLiteral("id")).toString());
    return ids;
}

int EditorWorld::GetState(const RobotExecuteInfo& app, const QString& versionId)
{
    const QVector<QJsonObject> versions = ListVersions(app);
    for (const QJsonObject& version : versions)
        if (version.value(QStringLiteral("id")).toString() == versionId)
            return version.value(QStringLiteral("state")).toInt();
    return 0;
}

QByteArray EditorWorld::GetContent(const QString& versionId)
{
    return Finish(network.get(Request(QStringLiteral("/versions/%1/data").arg(versionId))));
}

QString EditorWorld::GetInstructions(const QString& versionId)
{
    RpaAppData content;
    content.Parse(GetContent(versionId));
    return content.GetAppExtendInfo()->GetManual();
}

QNetworkRequest EditorWorld::Request(const QString& path) const
{
    QNetworkRequest request(QUrl(server.BaseUrl() + QStringLiteral("/api/v1") + path));
    request.setRawHeader("Authorization", "Bearer " + server.Token(author));
    request.setRawHeader("Idempotency-Key", QUuid::createUuid().toByteArray(QUuid::WithoutBraces));
    return request;
}

// The set-up of a test must not fail unnoticed.
QByteArray EditorWorld::Finish(QNetworkReply* reply)
{
    QEventLoop loop;
    QObject::connect(reply, &QNetworkReply::finished, &loop, &QEventLoop::quit);
    if (!reply->isFinished())
        loop.exec();
    QByteArray answer = reply->readAll();
    if (reply->error() != QNetworkReply::NoError)
        qFatal("%s: %s %s", qPrintable(reply->url().path()), qPrintable(reply->errorString()),
               answer.constData());
    reply->deleteLater();
    return answer;
}
