// SPDX-License-Identifier: Apache-2.0

// What is done with an app as a whole: tags, copies, the bin, versions handed over.
#include "ServiceClientFixture.h"
#include "TestApp.h"
#include "VersionReplies.h"

#include <RpaServiceClient/apps/CopyAppRequest.h>
#include <RpaServiceClient/apps/CreateAppRequest.h>
#include <RpaServiceClient/apps/DeleteAppRequest.h>
#include <RpaServiceClient/apps/ListDeletedAppsRequest.h>
#include <RpaServiceClient/apps/PurgeAppRequest.h>
#include <RpaServiceClient/apps/RestoreAppRequest.h>
#include <RpaServiceClient/apps/SetTagsRequest.h>
#include <RpaServiceClient/versions/CreateVersionRequest.h>

#include <QCryptographicHash>

using namespace ServiceExamples;

namespace
{
const QByteArray taggedApp =
    R"({"id":"a1","name":"应用","kind":1,"creator":"me","creatorName":"我","oxsAppKey":"k","createdAt":1000,)"
    R"("changedAt":2000,"changedBy":"him","changedByName":"他","state":3,"tags":["财务","月结"]})";

FaultServer::Reply Empty()
{
    FaultServer::Reply reply;
    reply.status = 204;
    return reply;
}
} // namespace

class VersionServiceClientAppsTest : public ServiceClientFixture
{
    Q_OBJECT

private slots:
    void readsTagsStateAndWhoChangedAnApp();
    void createsAnAppUnderAFreeName();
    void copiesAnApp();
    void asksForAnAct_data();
    void asksForAnAct();
    void listsTheBin();
    void refusesABinThatIsNoList();
    void handsAVersionOverByteForByte();
    void believesOnlyAVersionOfWhatWasSent();

private:
    void SendVersion(const QByteArray& sent, const QByteArray& confirmed,
                     Result<VersionServiceVersion>* result)
    {
        VersionReplies::Version reply;
        reply.content = confirmed;
        server->Enqueue(VersionReplies::Saved(201, reply));
        client = std::make_unique<VersionServiceClient>();
        client->Send(CreateVersionRequest{QStringLiteral("a1"),
                                          {QStringLiteral("版本 甲"), QStringLiteral("两行\n描述"),
                                           QStringLiteral("1.2"), sent}},
                     nullptr, Into(result));
        QTRY_VERIFY(*result);
    }

    std::unique_ptr<VersionServiceClient> client;
};

void VersionServiceClientAppsTest::readsTagsStateAndWhoChangedAnApp()
{
    server->Enqueue(FaultServer::Json(200, taggedApp));
    VersionServiceClient service;
    Result<VersionServiceApp> result;

    service.Send(SetTagsRequest{QStringLiteral("a1"), {QStringLiteral("财务"), QStringLiteral("月结")}},
                 nullptr, Into(&result));

    QTRY_VERIFY(result);
    QVERIFY2(result->success, qPrintable(result->errorDesc));
    QCOMPARE(result->value.tags, QStringList({QStringLiteral("财务"), QStringLiteral("月结")}));
    QCOMPARE(result->value.state, 3);
    QCOMPARE(result->value.changedByPin, QStringLiteral("him"));
    QCOMPARE(result->value.changedByName, QStringLiteral("他"));
    QCOMPARE(server->GetRequests().last().method, QByteArray("PATCH"));
    QCOMPARE(server->GetRequests().last().path, QByteArray("/api/v1/apps/a1"));
    QCOMPARE(server->GetRequests().last().body, QByteArray(R"({"tags":["财务","月结"]})"));
}

void VersionServiceClientAppsTest::createsAnAppUnderAFreeName()
{
    server->Enqueue(FaultServer::Json(201, app));
    VersionServiceClient service;
    Result<VersionServiceApp> result;

    service.Send(CreateAppRequest{QStringLiteral("应用"), 1, true}, nullptr, Into(&result));

    QTRY_VERIFY(result);
    QVERIFY(result->success);
    QCOMPARE(server->GetRequests().last().body, QByteArray(R"({"anyName":true,"kind":1,"name":"应用"})"));
}

void VersionServiceClientAppsTest::copiesAnApp()
{
    server->Enqueue(FaultServer::Json(201, app));
    VersionServiceClient service;
    Result<VersionServiceApp> result;

    service.Send(CopyAppRequest{QStringLiteral("a0")}, nullptr, Into(&result));

    QTRY_VERIFY(result);
    QVERIFY(result->success);
    QCOMPARE(result->value.id, QStringLiteral("a1"));
    QCOMPARE(server->GetRequests().last().path, QByteArray("/api/v1/apps/a0/copies"));
    QVERIFY(!server->GetRequests().last().headers.value("idempotency-key").isEmpty());
}

void VersionServiceClientAppsTest::asksForAnAct_data()
{
    QTest::addColumn<QString>("act");
    QTest::addColumn<QByteArray>("method");
    QTest::addColumn<QByteArray>("path");
    QTest::newRow("delete") << QStringLiteral("delete") << QByteArray("DELETE")
                            << QByteArray("/api/v1/apps/a1");
    QTest::newRow("purge") << QStringLiteral("purge") << QByteArray("DELETE")
                           << QByteArray("/api/v1/deleted-apps/a1");
    QTest::newRow("restore") << QStringLiteral("restore") << QByteArray("POST")
                             << QByteArray("/api/v1/deleted-apps/a1/restore");
}

void VersionServiceClientAppsTest::asksForAnAct()
{
    QFETCH(QString, act);
    VersionServiceClient service;
    Result<VersionServiceNothing> nothing;
    Result<VersionServiceApp> restored;

    if (act == QLatin1String("restore")) {
        server->Enqueue(FaultServer::Json(200, app));
        service.Send(RestoreAppRequest{QStringLiteral("a1")}, nullptr, Into(&restored));
        QTRY_VERIFY(restored);
        QVERIFY(restored->success);
    } else {
        server->Enqueue(Empty());
        if (act == QLatin1String("delete"))
            service.Send(DeleteAppRequest{QStringLiteral("a1")}, nullptr, Into(&nothing));
        else
            service.Send(PurgeAppRequest{QStringLiteral("a1")}, nullptr, Into(&nothing));
        QTRY_VERIFY(nothing);
        QVERIFY(nothing->success);
    }

    const auto sent = server->GetRequests().last();
    QTEST(sent.method, "method");
    QTEST(sent.path, "path");
    QVERIFY(!sent.headers.value("idempotency-key").isEmpty());
}

void VersionServiceClientAppsTest::listsTheBin()
{
    server->Enqueue(FaultServer::Json(200, R"({"apps":[{"app":)" + taggedApp + R"(,"deletedAt":7000}]})"));
    VersionServiceClient service;
    Result<QVector<VersionServiceDeletedApp>> result;

    service.Send(ListDeletedAppsRequest{}, nullptr, Into(&result));

    QTRY_VERIFY(result);
    QVERIFY(result->success);
    QCOMPARE(result->value.size(), 1);
    QCOMPARE(result->value.first().app.id, QStringLiteral("a1"));
    QCOMPARE(result->value.first().deletedAt.toMSecsSinceEpoch(), 7000);
}

void VersionServiceClientAppsTest::refusesABinThatIsNoList()
{
    server->Enqueue(FaultServer::Json(200, R"({"apps":[{"app":{"id":"../a"},"deletedAt":7000}]})"));
    VersionServiceClient service;
    Result<QVector<VersionServiceDeletedApp>> result;

    service.Send(ListDeletedAppsRequest{}, nullptr, Into(&result));

    QTRY_VERIFY(result);
    QVERIFY(!result->success);
    QVERIFY(!result->errorDesc.isEmpty());
}

void VersionServiceClientAppsTest::handsAVersionOverByteForByte()
{
    const QByteArray data = R"({ "uiData":{"pages":[]}, "name":"甲" })";
    Result<VersionServiceVersion> result;

    SendVersion(data, data, &result);

    QVERIFY2(result->success, qPrintable(result->errorDesc));
    const auto sent = server->GetRequests().last();
    QCOMPARE(sent.method, QByteArray("POST"));
    QCOMPARE(sent.path, QByteArray("/api/v1/apps/a1/versions"));
    QCOMPARE(sent.body, data);
    QCOMPARE(sent.headers.value("version-name"), QByteArray("%E7%89%88%E6%9C%AC%20%E7%94%B2"));
    QCOMPARE(sent.headers.value("version-description"),
             QByteArray("%E4%B8%A4%E8%A1%8C%0A%E6%8F%8F%E8%BF%B0"));
    QCOMPARE(sent.headers.value("version-api"), QByteArray("1.2"));
}

void VersionServiceClientAppsTest::believesOnlyAVersionOfWhatWasSent()
{
    Result<VersionServiceVersion> result;

    SendVersion(R"({"uiData":{"pages":[]}})", "{}", &result);

    QVERIFY(!result->success);
}

RPA_TEST_MAIN(VersionServiceClientAppsTest)
#include "tst_versionserviceclient_apps.moc"
