// SPDX-License-Identifier: Apache-2.0

#include "ReleaseFixture.h"

#include <RpaAppData/RpaAppData.h>
#include <RpaAppData/RpaAppExtendInfo.h>
#include <RpaServiceClient/VersionServiceSettings.h>
#include <WbBaseUI/WbTheme.h>

#include <QCryptographicHash>
#include <QJsonDocument>
#include <QNetworkReply>
#include <QUuid>
#include <QtTest>

#include <memory>

void ReleaseFixture::initTestCase()
{
    WbTheme::Instance()->Apply(WbTheme::Scheme::Light);
    QVERIFY2(server.Start(), server.ErrorText());
    VersionServiceSettings::Instance()->SetBaseUrl(QUrl(server.BaseUrl()));
}

void ReleaseFixture::SignIn(const char* account)
{
    token = server.Token(QLatin1String(account));
    VersionServiceSettings::Instance()->SetToken(token);
}

QJsonObject ReleaseFixture::Send(const QByteArray& method, const QString& path, const QByteArray& body,
                                 const QMap<QByteArray, QByteArray>& headers)
{
    QNetworkRequest request(QUrl(server.BaseUrl() + path));
    request.setRawHeader("Authorization", "Bearer " + token);
    request.setRawHeader("Idempotency-Key", QUuid::createUuid().toByteArray(QUuid::WithoutBraces));
    request.setHeader(QNetworkRequest::ContentTypeHeader, QStringLiteral("application/json"));
    for (auto it = headers.begin(); it != headers.end(); ++it)
        request.setRawHeader(it.key(), it.value());
    const std::unique_ptr<QNetworkReply> reply(network.sendCustomRequest(request, method, body));
    QSignalSpy finished(reply.get(), &QNetworkReply::finished);
    if (!reply->isFinished())
        finished.wait(10000);
    return QJsonDocument::fromJson(reply->readAll()).object();
}

QString ReleaseFixture::Release(const QString& name, int type)
{
    SignIn("author-1");
    const QString app =
        Send("POST", QStringLiteral("/api/v1/apps"),
             QJsonDocument(QJsonObject{{QStringLiteral("name"), name}, {QStringLiteral("kind"), 0}}).toJson())
            .value(QLatin1String("id"))
            .toString();
    ReleaseVersion(app, QStringLiteral("v1"), type);
    return app;
}

QString ReleaseFixture::ReleaseVersion(const QString& app, const QString& name, int type)
{
    RpaAppData content;
    content.InitDefault();
    content.GetAppExtendInfo()->manual = QStringLiteral("<p>先填写再运行</p>");
    const QByteArray body = content.ToJson();
    const QByteArray digest =
        "sha-256=:" + QCryptographicHash::hash(body, QCryptographicHash::Sha256).toBase64() + ':';
    const QString version =
        Send("POST", QStringLiteral("/api/v1/apps/%1/versions").arg(app), body,
             {{"Content-Digest", digest}, {"Version-Name", QUrl::toPercentEncoding(name)}})
            .value(QLatin1String("id"))
            .toString();
    Send("POST", QStringLiteral("/api/v1/versions/%1/release").arg(version),
         "{\"type\":" + QByteArray::number(type) + "}", {{"If-Match", "\"1\""}});
    return version;
}
