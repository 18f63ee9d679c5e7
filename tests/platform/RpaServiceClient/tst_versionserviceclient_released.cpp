// SPDX-License-Identifier: Apache-2.0

// Released apps, how readers come to them, and what was done.
#include "ServiceClientFixture.h"
#include "TestApp.h"
#include "VersionReplies.h"

#include <RpaServiceClient/invitations/CreateInvitationRequest.h>
#include <RpaServiceClient/invitations/ListInvitationsRequest.h>
#include <RpaServiceClient/invitations/RedeemInvitationRequest.h>
#include <RpaServiceClient/invitations/RevokeInvitationRequest.h>
#include <RpaServiceClient/releases/ListGrayAppsRequest.h>
#include <RpaServiceClient/releases/ListOnlineAppsRequest.h>
#include <RpaServiceClient/releases/ListReleasesRequest.h>
#include <RpaServiceClient/releases/TakeBackRequest.h>
#include <RpaServiceClient/usage/ListUsageRequest.h>
#include <RpaServiceClient/usage/SendUsageEventsRequest.h>
#include <RpaServiceClient/versions/GetVersionDataRequest.h>

#include <QJsonDocument>
#include <QJsonObject>

using namespace ServiceExamples;

namespace
{
QByteArray Release(const QByteArray& id, int state, bool present)
{
    return R"({"version":{"id":")" + id + R"(","name":"版本)" + id + R"(","description":"描述","state":)" +
           QByteArray::number(state) + R"(},"releasedAt":3000,"present":)" + (present ? "true" : "false") +
           "}";
}
} // namespace

class VersionServiceReleasedTest : public ServiceClientFixture
{
    Q_OBJECT

private slots:
    void listsReleasedApps_data();
    void listsReleasedApps();
    void readsTheDataOfAReleasedVersion();
    void doesNotBelieveDataWithAnotherDigest();
    void doesNotBelieveABrokenReleasedApp_data();
    void doesNotBelieveABrokenReleasedApp();
    void listsInvitations();
    void createsAnInvitation();
    void revokesAnInvitation();
    void redeemsAnInvitation();
    void tellsWhyACodeWasRefused();
    void listsReleases();
    void doesNotBelieveBrokenReleases_data();
    void doesNotBelieveBrokenReleases();
    void takesBack();
    void tellsThatSomebodyElseWasFirst();
    void sendsUsageEvents();
    void readsTheUsage();
    void doesNotBelieveABrokenUsage_data();
    void doesNotBelieveABrokenUsage();
};

void VersionServiceReleasedTest::listsReleasedApps_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<QByteArray>("path");

    QTest::newRow("online") << 3 << QByteArray("/api/v1/online-apps");
    QTest::newRow("gray") << 2 << QByteArray("/api/v1/gray-apps");
}

void VersionServiceReleasedTest::listsReleasedApps()
{
    QFETCH(int, state);
    QFETCH(QByteArray, path);
    server->Enqueue(FaultServer::Json(200, R"({"apps":[)" + Released(state) + "]}"));
    VersionServiceClient client;
    Result<QVector<VersionServiceReleasedApp>> result;

    if (state == 3)
        client.Send(ListOnlineAppsRequest{}, nullptr, Into(&result));
    else
        client.Send(ListGrayAppsRequest{}, nullptr, Into(&result));

    QTRY_VERIFY(result);
    QVERIFY2(result->success, qPrintable(result->errorDesc));
    QCOMPARE(result->value.size(), 1);
    const VersionServiceReleasedApp released = result->value.first();
    QCOMPARE(released.app.name, QStringLiteral("应用"));
    QCOMPARE(released.versionId, QStringLiteral("v1"));
    QCOMPARE(released.versionName, QStringLiteral("版本1"));
    QCOMPARE(released.description, QStringLiteral("描述"));
    QCOMPARE(released.state, state);
    QCOMPARE(released.releasedAt.toMSecsSinceEpoch(), 3000);
    QCOMPARE(server->GetRequests().last().path, path);
}

void VersionServiceReleasedTest::readsTheDataOfAReleasedVersion()
{
    const QByteArray data = R"({"a":1})";
    server->Enqueue(FaultServer::Data(data, 1));
    VersionServiceClient client;
    Result<QByteArray> result;

    client.Send(GetVersionDataRequest{QStringLiteral("v1")}, nullptr, Into(&result));

    QTRY_VERIFY(result);
    QVERIFY2(result->success, qPrintable(result->errorDesc));
    QCOMPARE(result->value, data);
    QCOMPARE(server->GetRequests().last().path, QByteArray("/api/v1/versions/v1/data"));
}

void VersionServiceReleasedTest::doesNotBelieveDataWithAnotherDigest()
{
    FaultServer::Reply reply = FaultServer::Data(R"({"a":1})", 1);
    reply.body = R"({"a":2})";
    server->Enqueue(reply);
    VersionServiceClient client;
    Result<QByteArray> result;

    client.Send(GetVersionDataRequest{QStringLiteral("v1")}, nullptr, Into(&result));

    QTRY_VERIFY(result);
    QVERIFY(!result->success);
    QVERIFY(!result->errorDesc.isEmpty());
}

void VersionServiceReleasedTest::doesNotBelieveABrokenReleasedApp_data()
{
    QTest::addColumn<QByteArray>("body");

    QTest::newRow("no list") << QByteArray("{}");
    QTest::newRow("no app") << QByteArray(R"({"apps":[{"version":{"id":"v1","state":3}}]})");
    QTest::newRow("id with a slash") << R"({"apps":[)" + Released(3).replace(R"("v1")", R"("v/1")") + "]}";
    QTest::newRow("develop version") << R"({"apps":[)" + Released(1) + "]}";
}

void VersionServiceReleasedTest::doesNotBelieveABrokenReleasedApp()
{
    QFETCH(QByteArray, body);
    server->Enqueue(FaultServer::Json(200, body));
    VersionServiceClient client;
    Result<QVector<VersionServiceReleasedApp>> result;

    client.Send(ListOnlineAppsRequest{}, nullptr, Into(&result));

    QTRY_VERIFY(result);
    QVERIFY(!result->success);
    QVERIFY(!result->errorDesc.isEmpty());
}

void VersionServiceReleasedTest::listsInvitations()
{
    server->Enqueue(FaultServer::Json(200, R"({"invitations":[)" + invitation + "]}"));
    VersionServiceClient client;
    Result<QVector<VersionServiceInvitation>> result;

    client.Send(ListInvitationsRequest{QStringLiteral("a1")}, nullptr, Into(&result));

    QTRY_VERIFY(result);
    QVERIFY2(result->success, qPrintable(result->errorDesc));
    QCOMPARE(result->value.size(), 1);
    const VersionServiceInvitation first = result->value.first();
    QCOMPARE(first.code, QStringLiteral("ABCDE-FGHJK"));
    QCOMPARE(first.mostUses, 5);
    QCOMPARE(first.uses, 2);
    QVERIFY(first.IsOpen(QDateTime::fromMSecsSinceEpoch(8999, Qt::UTC)));
    QVERIFY(!first.IsOpen(QDateTime::fromMSecsSinceEpoch(9000, Qt::UTC)));
}

void VersionServiceReleasedTest::createsAnInvitation()
{
    server->Enqueue(FaultServer::Json(201, invitation));
    VersionServiceClient client;
    Result<VersionServiceInvitation> result;

    client.Send(CreateInvitationRequest{QStringLiteral("a1"), 7, 5}, nullptr, Into(&result));

    QTRY_VERIFY(result);
    QVERIFY2(result->success, qPrintable(result->errorDesc));
    const auto sent = server->GetRequests().last();
    QCOMPARE(sent.path, QByteArray("/api/v1/apps/a1/invitations"));
    QVERIFY(!sent.headers.value("idempotency-key").isEmpty());
    const QJsonObject order = QJsonDocument::fromJson(sent.body).object();
    QCOMPARE(order.value(QLatin1String("validDays")).toInt(), 7);
    QCOMPARE(order.value(QLatin1String("mostUses")).toInt(), 5);
}

void VersionServiceReleasedTest::revokesAnInvitation()
{
    server->Enqueue(
        FaultServer::Json(200, QByteArray(invitation).replace(R"("revokedAt":0)", R"("revokedAt":7)")));
    VersionServiceClient client;
    Result<VersionServiceInvitation> result;

    client.Send(RevokeInvitationRequest{QStringLiteral("i1")}, nullptr, Into(&result));

    QTRY_VERIFY(result);
    QVERIFY2(result->success, qPrintable(result->errorDesc));
    QVERIFY(result->value.revoked);
    QCOMPARE(server->GetRequests().last().method, QByteArray("DELETE"));
    QCOMPARE(server->GetRequests().last().path, QByteArray("/api/v1/invitations/i1"));
}

void VersionServiceReleasedTest::redeemsAnInvitation()
{
    server->Enqueue(FaultServer::Json(200, Released(2)));
    VersionServiceClient client;
    Result<VersionServiceReleasedApp> result;

    client.Send(RedeemInvitationRequest{QStringLiteral("abcde fghjk")}, nullptr, Into(&result));

    QTRY_VERIFY(result);
    QVERIFY2(result->success, qPrintable(result->errorDesc));
    QCOMPARE(result->value.app.id, QStringLiteral("a1"));
    QCOMPARE(QJsonDocument::fromJson(server->GetRequests().last().body)
                 .object()
                 .value(QLatin1String("code"))
                 .toString(),
             QStringLiteral("abcde fghjk"));
}

void VersionServiceReleasedTest::tellsWhyACodeWasRefused()
{
    server->Enqueue(FaultServer::Refusal(409, "invitation-closed", QStringLiteral("邀请码已过期")));
    VersionServiceClient client;
    Result<VersionServiceReleasedApp> result;

    client.Send(RedeemInvitationRequest{QStringLiteral("ABCDE-FGHJK")}, nullptr, Into(&result));

    QTRY_VERIFY(result);
    QVERIFY(!result->success);
    QCOMPARE(result->errorCode, QStringLiteral("invitation-closed"));
    QCOMPARE(result->errorDesc, QStringLiteral("邀请码已过期"));
}

void VersionServiceReleasedTest::listsReleases()
{
    server->Enqueue(FaultServer::Json(200, R"({"releases":[)" + Release("v2", 3, true) + "," +
                                               Release("v1", 3, false) + "," + Release("v3", 2, true) +
                                               "]}"));
    VersionServiceClient client;
    Result<QVector<VersionServiceRelease>> result;

    client.Send(ListReleasesRequest{QStringLiteral("a1")}, nullptr, Into(&result));

    QTRY_VERIFY(result);
    QVERIFY2(result->success, qPrintable(result->errorDesc));
    QCOMPARE(result->value.size(), 3);
    const VersionServiceRelease first = result->value.first();
    QCOMPARE(first.versionId, QStringLiteral("v2"));
    QCOMPARE(first.versionName, QStringLiteral("版本v2"));
    QCOMPARE(first.description, QStringLiteral("描述"));
    QCOMPARE(first.state, 3);
    QCOMPARE(first.releasedAt.toMSecsSinceEpoch(), 3000);
    QVERIFY(first.present);
    QVERIFY(!result->value.at(1).present);
    QCOMPARE(result->value.at(2).state, 2);
    QCOMPARE(server->GetRequests().last().path, QByteArray("/api/v1/apps/a1/releases"));
}

void VersionServiceReleasedTest::doesNotBelieveBrokenReleases_data()
{
    QTest::addColumn<QByteArray>("releases");
    QTest::newRow("develop") << Release("v1", 1, false);
    QTest::newRow("id that is none") << Release("../v1", 3, false);
    QTest::newRow("two present ones") << Release("v1", 3, true) + "," + Release("v2", 3, true);
}

void VersionServiceReleasedTest::doesNotBelieveBrokenReleases()
{
    QFETCH(QByteArray, releases);
    server->Enqueue(FaultServer::Json(200, R"({"releases":[)" + releases + "]}"));
    VersionServiceClient client;
    Result<QVector<VersionServiceRelease>> result;

    client.Send(ListReleasesRequest{QStringLiteral("a1")}, nullptr, Into(&result));

    QTRY_VERIFY(result);
    QVERIFY(!result->success);
    QVERIFY(!result->errorDesc.isEmpty());
}

void VersionServiceReleasedTest::takesBack()
{
    server->Enqueue(FaultServer::Json(200, R"({"versionId":"v1"})"));
    VersionServiceClient client;
    Result<QString> result;

    client.Send(TakeBackRequest{QStringLiteral("a1"), 3, QStringLiteral("v2"), QStringLiteral("v1"),
                                QStringLiteral("有严重问题")},
                nullptr, Into(&result));

    QTRY_VERIFY(result);
    QVERIFY2(result->success, qPrintable(result->errorDesc));
    QCOMPARE(result->value, QStringLiteral("v1"));
    const auto sent = server->GetRequests().last();
    QCOMPARE(sent.method, QByteArray("POST"));
    QCOMPARE(sent.path, QByteArray("/api/v1/apps/a1/take-back"));
    QVERIFY(!sent.headers.value("idempotency-key").isEmpty());
    const QJsonObject order = QJsonDocument::fromJson(sent.body).object();
    QCOMPARE(order.value(QLatin1String("state")).toInt(), 3);
    QCOMPARE(order.value(QLatin1String("from")).toString(), QStringLiteral("v2"));
    QCOMPARE(order.value(QLatin1String("to")).toString(), QStringLiteral("v1"));
    QCOMPARE(order.value(QLatin1String("reason")).toString(), QStringLiteral("有严重问题"));
}

void VersionServiceReleasedTest::tellsThatSomebodyElseWasFirst()
{
    server->Enqueue(FaultServer::Refusal(409, "release-changed", QStringLiteral("已经变化")));
    VersionServiceClient client;
    Result<QString> result;

    client.Send(
        TakeBackRequest{QStringLiteral("a1"), 2, QStringLiteral("v2"), QString(), QStringLiteral("x")},
        nullptr, Into(&result));

    QTRY_VERIFY(result);
    QVERIFY(!result->success);
    QCOMPARE(result->errorCode, QStringLiteral("release-changed"));
    QCOMPARE(result->errorDesc, QStringLiteral("已经变化"));
}

void VersionServiceReleasedTest::sendsUsageEvents()
{
    server->Enqueue(VersionReplies::Deleted());
    VersionServiceClient client;
    Result<VersionServiceNothing> result;

    client.Send(SendUsageEventsRequest{{QJsonObject{{QStringLiteral("id"), QStringLiteral("1")}}}}, nullptr,
                Into(&result));

    QTRY_VERIFY(result);
    QVERIFY2(result->success, qPrintable(result->errorDesc));
    const FaultServer::Request request = server->GetRequests().last();
    QCOMPARE(request.method + ' ' + request.path, QByteArray("POST /api/v1/usage-events"));
    QCOMPARE(request.body, QByteArray(R"({"events":[{"id":"1"}]})"));
}

void VersionServiceReleasedTest::readsTheUsage()
{
    server->Enqueue(FaultServer::Json(200, R"({"counts":[{"day":"2026-03-01","event":"Save","count":7},)"
                                           R"({"day":"2026-02-28","event":"Run","count":1}]})"));
    VersionServiceClient client;
    Result<QVector<VersionServiceUsageCount>> result;

    client.Send(ListUsageRequest{30}, nullptr, Into(&result));

    QTRY_VERIFY(result);
    QVERIFY2(result->success, qPrintable(result->errorDesc));
    QCOMPARE(server->GetRequests().last().path, QByteArray("/api/v1/usage?days=30"));
    QCOMPARE(result->value.size(), 2);
    QCOMPARE(result->value.first().day, QDate(2026, 3, 1));
    QCOMPARE(result->value.first().event, QStringLiteral("Save"));
    QCOMPARE(result->value.first().count, 7);
    QCOMPARE(result->value.last().event, QStringLiteral("Run"));
}

void VersionServiceReleasedTest::doesNotBelieveABrokenUsage_data()
{
    QTest::addColumn<QByteArray>("body");

    QTest::newRow("no list") << QByteArray(R"({"counts":{}})");
    QTest::newRow("no day") << QByteArray(R"({"counts":[{"day":"soon","event":"Save","count":7}]})");
    QTest::newRow("no event") << QByteArray(R"({"counts":[{"day":"2026-03-01","event":"","count":7}]})");
    QTest::newRow("no count") << QByteArray(R"({"counts":[{"day":"2026-03-01","event":"Save"}]})");
}

void VersionServiceReleasedTest::doesNotBelieveABrokenUsage()
{
    QFETCH(QByteArray, body);
    server->Enqueue(FaultServer::Json(200, body));
    VersionServiceClient client;
    Result<QVector<VersionServiceUsageCount>> result;

    client.Send(ListUsageRequest{30}, nullptr, Into(&result));

    QTRY_VERIFY(result);
    QVERIFY(!result->success);
}

RPA_TEST_MAIN(VersionServiceReleasedTest)
#include "tst_versionserviceclient_released.moc"
