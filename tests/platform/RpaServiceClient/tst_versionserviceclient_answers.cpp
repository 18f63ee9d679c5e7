// SPDX-License-Identifier: Apache-2.0

// Answers that are not to be believed, or that nobody is left to hear.
#include "ServiceClientFixture.h"
#include "TestApp.h"

#include <RpaServiceClient/apps/CopyAppRequest.h>
#include <RpaServiceClient/apps/ListAppsRequest.h>

using namespace ServiceExamples;

class VersionServiceAnswersTest : public ServiceClientFixture
{
    Q_OBJECT

private slots:
    void doesNotBelieveABrokenAnswer_data();
    void doesNotBelieveABrokenAnswer();
    void answersWhatIsOutstandingWhenItIsDestroyed();
    void callsNoContextWhenItIsDestroyed();
    void doesNotCallAContextThatIsGone();
};

void VersionServiceAnswersTest::doesNotBelieveABrokenAnswer_data()
{
    QTest::addColumn<QByteArray>("body");

    QTest::newRow("not an object") << QByteArray("[]");
    QTest::newRow("no list") << QByteArray("{}");
    QTest::newRow("app without id") << QByteArray(R"({"apps":[{"name":"x","kind":0}]})");
    QTest::newRow("app without name") << QByteArray(R"({"apps":[{"id":"x","kind":0}]})");
    QTest::newRow("app without kind") << QByteArray(R"({"apps":[{"id":"x","name":"x"}]})");
    QTest::newRow("cut") << QByteArray(R"({"apps":[)");
}

void VersionServiceAnswersTest::doesNotBelieveABrokenAnswer()
{
    QFETCH(const QByteArray, body);
    server->Enqueue(FaultServer::Json(200, body));
    VersionServiceClient client;
    Result<QVector<VersionServiceApp>> result;

    client.Send(ListAppsRequest{}, nullptr, Into(&result));

    QTRY_VERIFY(result);
    QVERIFY(!result->success);
    QVERIFY(!result->errorDesc.isEmpty());
}

void VersionServiceAnswersTest::answersWhatIsOutstandingWhenItIsDestroyed()
{
    server->SetScript([](const auto&) { return FaultServer::Failing(FaultServer::Fault::Silence); });
    auto client = std::make_unique<VersionServiceClient>();
    Result<VersionServiceApp> result;
    client->Send(CopyAppRequest{QStringLiteral("a1")}, nullptr, Into(&result));
    QVERIFY(!result);

    client.reset();

    QVERIFY(result);
    QVERIFY(!result->success);
}

// Mostly it goes within the destructor of whoever asked, who is no longer whole.
void VersionServiceAnswersTest::callsNoContextWhenItIsDestroyed()
{
    server->SetScript([](const auto&) { return FaultServer::Failing(FaultServer::Fault::Silence); });
    auto client = std::make_unique<VersionServiceClient>();
    Result<VersionServiceApp> forSomebody;
    Result<VersionServiceApp> forNobodyInParticular;
    client->Send(CopyAppRequest{QStringLiteral("a1")}, this, Into(&forSomebody));
    client->Send(CopyAppRequest{QStringLiteral("a2")}, nullptr, Into(&forNobodyInParticular));

    client.reset();

    QVERIFY(!forSomebody);
    QVERIFY(forNobodyInParticular);
}

void VersionServiceAnswersTest::doesNotCallAContextThatIsGone()
{
    server->SetScript([](const auto&) { return FaultServer::Json(200, app); });
    VersionServiceClient client;
    Result<VersionServiceApp> forNobody;
    Result<VersionServiceApp> forSomebody;
    auto context = std::make_unique<QObject>();
    client.Send(CopyAppRequest{QStringLiteral("a1")}, context.get(), Into(&forNobody));
    context.reset();

    client.Send(CopyAppRequest{QStringLiteral("a1")}, this, Into(&forSomebody));

    QTRY_VERIFY(forSomebody);
    QTRY_COMPARE(server->GetRequestCount(), 2);
    QVERIFY(!forNobody);
}

RPA_TEST_MAIN(VersionServiceAnswersTest)
#include "tst_versionserviceclient_answers.moc"
