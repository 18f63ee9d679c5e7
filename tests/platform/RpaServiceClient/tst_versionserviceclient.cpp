// SPDX-License-Identifier: Apache-2.0

// Sessions, apps and their versions.
#include "ServiceClientFixture.h"
#include "TestApp.h"
#include "VersionReplies.h"

#include <RpaServiceClient/apps/CreateAppRequest.h>
#include <RpaServiceClient/apps/ListAppsRequest.h>
#include <RpaServiceClient/apps/RenameAppRequest.h>
#include <RpaServiceClient/sessions/GetCurrentSessionRequest.h>
#include <RpaServiceClient/sessions/SignInRequest.h>
#include <RpaServiceClient/sessions/SignOutRequest.h>
#include <RpaServiceClient/versions/ListVersionsRequest.h>

#include <QCryptographicHash>
#include <QJsonDocument>

using namespace ServiceExamples;

class VersionServiceClientTest : public ServiceClientFixture
{
    Q_OBJECT

private slots:
    void signsIn();
    void tellsWhySigningInFailed();
    void readsTheCurrentSession();
    void signsOut();
    void listsAppsByName();
    void createsAnApp();
    void renamesAnApp();
    void listsVersions();
};

void VersionServiceClientTest::signsIn()
{
    server->Enqueue(
        FaultServer::Json(201, R"({"token":"secret","account":)" + account + R"(,"expiresAt":5000})"));
    VersionServiceClient client;
    Result<VersionServiceSession> result;

    client.Send(SignInRequest{QStringLiteral("me"), QStringLiteral("pässword"), true}, nullptr,
                Into(&result));

    QTRY_VERIFY(result);
    QVERIFY2(result->success, qPrintable(result->errorDesc));
    QCOMPARE(result->value.token, QByteArray("secret"));
    QCOMPARE(result->value.account.pin, QStringLiteral("me"));
    QCOMPARE(result->value.account.venderId, QStringLiteral("vender"));
    QCOMPARE(result->value.account.roles, QStringList({QStringLiteral("author"), QStringLiteral("user")}));
    QCOMPARE(result->value.expiresAt.toMSecsSinceEpoch(), 5000);
    const auto sent = server->GetRequests().last();
    QVERIFY(!sent.headers.contains("authorization"));
    QCOMPARE(QJsonDocument::fromJson(sent.body).object().value(QLatin1String("password")).toString(),
             QStringLiteral("pässword"));
    QCOMPARE(QJsonDocument::fromJson(sent.body).object().value(QLatin1String("stay")), QJsonValue(true));
}

void VersionServiceClientTest::tellsWhySigningInFailed()
{
    server->Enqueue(FaultServer::Refusal(401, "bad-credentials", QStringLiteral("账号或密码错误")));
    VersionServiceClient client;
    Result<VersionServiceSession> result;

    client.Send(SignInRequest{QStringLiteral("me"), QString(), false}, nullptr, Into(&result));

    QTRY_VERIFY(result);
    QVERIFY(!result->success);
    QCOMPARE(result->errorCode, QStringLiteral("bad-credentials"));
    QCOMPARE(result->errorDesc, QStringLiteral("账号或密码错误"));
}

void VersionServiceClientTest::readsTheCurrentSession()
{
    server->Enqueue(FaultServer::Json(200, R"({"account":)" + account + R"(,"expiresAt":5000})"));
    VersionServiceClient client;
    Result<VersionServiceSession> result;

    client.Send(GetCurrentSessionRequest{}, nullptr, Into(&result));

    QTRY_VERIFY(result);
    QVERIFY(result->success);
    QVERIFY(result->value.token.isEmpty());
    QCOMPARE(server->GetRequests().last().headers.value("authorization"), QByteArray("Bearer token"));
}

void VersionServiceClientTest::signsOut()
{
    FaultServer::Reply reply;
    reply.status = 204;
    server->Enqueue(reply);
    VersionServiceClient client;
    Result<VersionServiceNothing> result;

    client.Send(SignOutRequest{}, nullptr, Into(&result));

    QTRY_VERIFY(result);
    QVERIFY(result->success);
    QCOMPARE(server->GetRequests().last().method, QByteArray("DELETE"));
}

void VersionServiceClientTest::listsAppsByName()
{
    server->Enqueue(FaultServer::Json(200, R"({"apps":[)" + app + "]}"));
    VersionServiceClient client;
    Result<QVector<VersionServiceApp>> result;

    client.Send(ListAppsRequest{QStringLiteral("a&b 应")}, nullptr, Into(&result));

    QTRY_VERIFY(result);
    QVERIFY2(result->success, qPrintable(result->errorDesc));
    QCOMPARE(result->value.size(), 1);
    QCOMPARE(result->value.first().name, QStringLiteral("应用"));
    QCOMPARE(result->value.first().kind, 1);
    QCOMPARE(result->value.first().changedAt.toMSecsSinceEpoch(), 2000);
    QCOMPARE(server->GetRequests().last().path, QByteArray("/api/v1/apps?query=a%26b%20%E5%BA%94"));
}

void VersionServiceClientTest::createsAnApp()
{
    server->Enqueue(FaultServer::Json(201, app));
    VersionServiceClient client;
    Result<VersionServiceApp> result;

    client.Send(CreateAppRequest{QStringLiteral("应用"), 1}, nullptr, Into(&result));

    QTRY_VERIFY(result);
    QVERIFY(result->success);
    QCOMPARE(result->value.id, QStringLiteral("a1"));
    QCOMPARE(result->value.creatorPin, QStringLiteral("me"));
    QVERIFY(!server->GetRequests().last().headers.value("idempotency-key").isEmpty());
    QCOMPARE(server->GetRequests().last().body, QByteArray(R"({"kind":1,"name":"应用"})"));
}

void VersionServiceClientTest::renamesAnApp()
{
    server->Enqueue(FaultServer::Json(200, app));
    VersionServiceClient client;
    Result<VersionServiceApp> result;

    client.Send(RenameAppRequest{QStringLiteral("a1"), QStringLiteral("应用")}, nullptr, Into(&result));

    QTRY_VERIFY(result);
    QVERIFY(result->success);
    QCOMPARE(server->GetRequests().last().method, QByteArray("PATCH"));
    QCOMPARE(server->GetRequests().last().path, QByteArray("/api/v1/apps/a1"));
}

void VersionServiceClientTest::listsVersions()
{
    VersionReplies::Version newer;
    newer.id = QStringLiteral("v2");
    newer.state = 2;
    newer.revision = 7;
    server->Enqueue(VersionReplies::List({newer, VersionReplies::Version()}));
    VersionServiceClient client;
    Result<QVector<VersionServiceVersion>> result;

    client.Send(ListVersionsRequest{QStringLiteral("app1")}, nullptr, Into(&result));

    QTRY_VERIFY(result);
    QVERIFY2(result->success, qPrintable(result->errorDesc));
    QCOMPARE(result->value.size(), 2);
    const VersionServiceVersion& first = result->value.first();
    QCOMPARE(first.id, QStringLiteral("v2"));
    QCOMPARE(first.name, newer.name);
    QCOMPARE(first.state, 2);
    QCOMPARE(first.revision, 7);
    QCOMPARE(first.pin, newer.pin);
    QCOMPARE(first.sha256, QCryptographicHash::hash(newer.content, QCryptographicHash::Sha256).toHex());
    QCOMPARE(server->GetRequests().last().path, QByteArray("/api/v1/apps/app1/versions"));
}

RPA_TEST_MAIN(VersionServiceClientTest)
#include "tst_versionserviceclient.moc"
