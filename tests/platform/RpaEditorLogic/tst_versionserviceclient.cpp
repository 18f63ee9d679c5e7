#include "FaultServer.h"
#include "TestApp.h"
#include "VersionReplies.h"

#include <RpaEditorLogic/VersionServiceClient.h>
#include <RpaEditorLogic/VersionServiceSettings.h>

#include <QCryptographicHash>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

#include <optional>

using namespace std::chrono_literals;

namespace
{
template <typename Value>
using Result = std::optional<VersionServiceResult<Value>>;

// Keeps the answer where the test can see it.
template <typename Value>
VersionServiceClient::Callback<Value> Into(Result<Value>* result)
{
    return [result](const VersionServiceResult<Value>& answer) { *result = answer; };
}

const QByteArray app =
    R"({"id":"a1","name":"应用","kind":1,"creator":"me","creatorName":"我","oxsAppKey":"k",)"
    R"("createdAt":1000,"changedAt":2000})";
const QByteArray account = R"({"pin":"me","name":"我","venderId":"vender","roles":["author","user"]})";

QByteArray Released(int state)
{
    return R"({"app":)" + app + R"(,"version":{"id":"v1","name":"版本1","description":"描述","state":)" +
           QByteArray::number(state) + R"(},"releasedAt":3000})";
}

const QByteArray invitation =
    R"({"id":"i1","code":"ABCDE-FGHJK","appId":"a1","versionId":"v1","createdAt":1000,"expiresAt":9000,)"
    R"("mostUses":5,"uses":2,"revokedAt":0})";
} // namespace

class VersionServiceClientTest : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void signsIn();
    void tellsWhySigningInFailed();
    void readsTheCurrentSession();
    void signsOut();
    void listsAppsByName();
    void createsAnApp();
    void renamesAnApp();
    void readsOneApp();
    void listsVersions();
    void listsReleasedApps_data();
    void listsReleasedApps();
    void readsTheDataOfAReleasedVersion();
    void doesNotBelieveDataWithAnotherDigest();
    void listsInvitations();
    void createsAnInvitation();
    void revokesAnInvitation();
    void redeemsAnInvitation();
    void tellsWhyACodeWasRefused();
    void readsTheAudit();
    void doesNotBelieveABrokenReleasedApp_data();
    void doesNotBelieveABrokenReleasedApp();
    void doesNotBelieveABrokenAnswer_data();
    void doesNotBelieveABrokenAnswer();
    void answersWhatIsOutstandingWhenItIsDestroyed();
    void callsNoContextWhenItIsDestroyed();
    void doesNotCallAContextThatIsGone();

private:
    std::unique_ptr<FaultServer> server;
};

void VersionServiceClientTest::init()
{
    server = std::make_unique<FaultServer>();
    auto* settings = VersionServiceSettings::Instance();
    settings->SetBaseUrl(server->GetUrl());
    settings->SetToken("token");
    WbHttpLimits limits;
    limits.inactivity = 1000ms;
    limits.total = 2000ms;
    settings->SetLimits(limits);
}

void VersionServiceClientTest::signsIn()
{
    server->Enqueue(
        FaultServer::Json(201, R"({"token":"secret","account":)" + account + R"(,"expiresAt":5000})"));
    VersionServiceClient client;
    Result<VersionServiceSession> result;

    client.SignIn(QStringLiteral("me"), QStringLiteral("pässword"), true, nullptr, Into(&result));

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

    client.SignIn(QStringLiteral("me"), QString(), false, nullptr, Into(&result));

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

    client.GetCurrentSession(nullptr, Into(&result));

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

    client.SignOut(nullptr, Into(&result));

    QTRY_VERIFY(result);
    QVERIFY(result->success);
    QCOMPARE(server->GetRequests().last().method, QByteArray("DELETE"));
}

void VersionServiceClientTest::listsAppsByName()
{
    server->Enqueue(FaultServer::Json(200, R"({"apps":[)" + app + "]}"));
    VersionServiceClient client;
    Result<QVector<VersionServiceApp>> result;

    client.ListApps(QStringLiteral("a&b 应"), nullptr, Into(&result));

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

    client.CreateApp(QStringLiteral("应用"), 1, nullptr, Into(&result));

    QTRY_VERIFY(result);
    QVERIFY(result->success);
    QCOMPARE(result->value.id, QStringLiteral("a1"));
    QVERIFY(!server->GetRequests().last().headers.value("idempotency-key").isEmpty());
    QCOMPARE(server->GetRequests().last().body, QByteArray(R"({"kind":1,"name":"应用"})"));
}

void VersionServiceClientTest::renamesAnApp()
{
    server->Enqueue(FaultServer::Json(200, app));
    VersionServiceClient client;
    Result<VersionServiceApp> result;

    client.RenameApp(QStringLiteral("a1"), QStringLiteral("应用"), nullptr, Into(&result));

    QTRY_VERIFY(result);
    QVERIFY(result->success);
    QCOMPARE(server->GetRequests().last().method, QByteArray("PATCH"));
    QCOMPARE(server->GetRequests().last().path, QByteArray("/api/v1/apps/a1"));
}

void VersionServiceClientTest::readsOneApp()
{
    server->Enqueue(FaultServer::Json(200, app));
    VersionServiceClient client;
    Result<VersionServiceApp> result;

    client.GetApp(QStringLiteral("a1"), nullptr, Into(&result));

    QTRY_VERIFY(result);
    QVERIFY(result->success);
    QCOMPARE(result->value.creatorPin, QStringLiteral("me"));
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

    client.ListVersions(QStringLiteral("app1"), nullptr, Into(&result));

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

void VersionServiceClientTest::listsReleasedApps_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<QByteArray>("path");

    QTest::newRow("online") << 3 << QByteArray("/api/v1/online-apps");
    QTest::newRow("gray") << 2 << QByteArray("/api/v1/gray-apps");
}

void VersionServiceClientTest::listsReleasedApps()
{
    QFETCH(int, state);
    QFETCH(QByteArray, path);
    server->Enqueue(FaultServer::Json(200, R"({"apps":[)" + Released(state) + "]}"));
    VersionServiceClient client;
    Result<QVector<VersionServiceReleasedApp>> result;

    if (state == 3)
        client.ListOnlineApps(nullptr, Into(&result));
    else
        client.ListGrayApps(nullptr, Into(&result));

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

void VersionServiceClientTest::readsTheDataOfAReleasedVersion()
{
    const QByteArray data = R"({"a":1})";
    server->Enqueue(FaultServer::Data(data, 1));
    VersionServiceClient client;
    Result<QByteArray> result;

    client.GetVersionData(QStringLiteral("v1"), nullptr, Into(&result));

    QTRY_VERIFY(result);
    QVERIFY2(result->success, qPrintable(result->errorDesc));
    QCOMPARE(result->value, data);
    QCOMPARE(server->GetRequests().last().path, QByteArray("/api/v1/versions/v1/data"));
}

void VersionServiceClientTest::doesNotBelieveDataWithAnotherDigest()
{
    FaultServer::Reply reply = FaultServer::Data(R"({"a":1})", 1);
    reply.body = R"({"a":2})";
    server->Enqueue(reply);
    VersionServiceClient client;
    Result<QByteArray> result;

    client.GetVersionData(QStringLiteral("v1"), nullptr, Into(&result));

    QTRY_VERIFY(result);
    QVERIFY(!result->success);
    QVERIFY(!result->errorDesc.isEmpty());
}

void VersionServiceClientTest::listsInvitations()
{
    server->Enqueue(FaultServer::Json(200, R"({"invitations":[)" + invitation + "]}"));
    VersionServiceClient client;
    Result<QVector<VersionServiceInvitation>> result;

    client.ListInvitations(QStringLiteral("a1"), nullptr, Into(&result));

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

void VersionServiceClientTest::createsAnInvitation()
{
    server->Enqueue(FaultServer::Json(201, invitation));
    VersionServiceClient client;
    Result<VersionServiceInvitation> result;

    client.CreateInvitation(QStringLiteral("a1"), 7, 5, nullptr, Into(&result));

    QTRY_VERIFY(result);
    QVERIFY2(result->success, qPrintable(result->errorDesc));
    const auto sent = server->GetRequests().last();
    QCOMPARE(sent.path, QByteArray("/api/v1/apps/a1/invitations"));
    QVERIFY(!sent.headers.value("idempotency-key").isEmpty());
    const QJsonObject order = QJsonDocument::fromJson(sent.body).object();
    QCOMPARE(order.value(QLatin1String("validDays")).toInt(), 7);
    QCOMPARE(order.value(QLatin1String("mostUses")).toInt(), 5);
}

void VersionServiceClientTest::revokesAnInvitation()
{
    server->Enqueue(
        FaultServer::Json(200, QByteArray(invitation).replace(R"("revokedAt":0)", R"("revokedAt":7)")));
    VersionServiceClient client;
    Result<VersionServiceInvitation> result;

    client.RevokeInvitation(QStringLiteral("i1"), nullptr, Into(&result));

    QTRY_VERIFY(result);
    QVERIFY2(result->success, qPrintable(result->errorDesc));
    QVERIFY(result->value.revoked);
    QCOMPARE(server->GetRequests().last().method, QByteArray("DELETE"));
    QCOMPARE(server->GetRequests().last().path, QByteArray("/api/v1/invitations/i1"));
}

void VersionServiceClientTest::redeemsAnInvitation()
{
    server->Enqueue(FaultServer::Json(200, Released(2)));
    VersionServiceClient client;
    Result<VersionServiceReleasedApp> result;

    client.RedeemInvitation(QStringLiteral("abcde fghjk"), nullptr, Into(&result));

    QTRY_VERIFY(result);
    QVERIFY2(result->success, qPrintable(result->errorDesc));
    QCOMPARE(result->value.app.id, QStringLiteral("a1"));
    QCOMPARE(QJsonDocument::fromJson(server->GetRequests().last().body)
                 .object()
                 .value(QLatin1String("code"))
                 .toString(),
             QStringLiteral("abcde fghjk"));
}

void VersionServiceClientTest::tellsWhyACodeWasRefused()
{
    server->Enqueue(FaultServer::Refusal(409, "invitation-closed", QStringLiteral("邀请码已过期")));
    VersionServiceClient client;
    Result<VersionServiceReleasedApp> result;

    client.RedeemInvitation(QStringLiteral("ABCDE-FGHJK"), nullptr, Into(&result));

    QTRY_VERIFY(result);
    QVERIFY(!result->success);
    QCOMPARE(result->errorCode, QStringLiteral("invitation-closed"));
    QCOMPARE(result->errorDesc, QStringLiteral("邀请码已过期"));
}

void VersionServiceClientTest::readsTheAudit()
{
    server->Enqueue(FaultServer::Json(
        200, R"({"entries":[{"id":"e1","at":4000,"pin":"me","act":"release.gray","appId":"a1",)"
             R"("versionId":"v1","detail":"版本1"}]})"));
    VersionServiceClient client;
    Result<QVector<VersionServiceAuditEntry>> result;

    client.ListAudit(QStringLiteral("e2"), 50, nullptr, Into(&result));

    QTRY_VERIFY(result);
    QVERIFY2(result->success, qPrintable(result->errorDesc));
    QCOMPARE(result->value.first().act, QStringLiteral("release.gray"));
    QCOMPARE(result->value.first().at.toMSecsSinceEpoch(), 4000);
    QCOMPARE(result->value.first().detail, QStringLiteral("版本1"));
    QCOMPARE(server->GetRequests().last().path, QByteArray("/api/v1/audit?limit=50&before=e2"));
}

void VersionServiceClientTest::doesNotBelieveABrokenReleasedApp_data()
{
    QTest::addColumn<QByteArray>("body");

    QTest::newRow("no list") << QByteArray("{}");
    QTest::newRow("no app") << QByteArray(R"({"apps":[{"version":{"id":"v1","state":3}}]})");
    QTest::newRow("id with a slash") << R"({"apps":[)" + Released(3).replace(R"("v1")", R"("v/1")") + "]}";
    QTest::newRow("develop version") << R"({"apps":[)" + Released(1) + "]}";
}

void VersionServiceClientTest::doesNotBelieveABrokenReleasedApp()
{
    QFETCH(QByteArray, body);
    server->Enqueue(FaultServer::Json(200, body));
    VersionServiceClient client;
    Result<QVector<VersionServiceReleasedApp>> result;

    client.ListOnlineApps(nullptr, Into(&result));

    QTRY_VERIFY(result);
    QVERIFY(!result->success);
    QVERIFY(!result->errorDesc.isEmpty());
}

void VersionServiceClientTest::doesNotBelieveABrokenAnswer_data()
{
    QTest::addColumn<QByteArray>("body");

    QTest::newRow("not an object") << QByteArray("[]");
    QTest::newRow("no list") << QByteArray("{}");
    QTest::newRow("app without id") << QByteArray(R"({"apps":[{"name":"x","kind":0}]})");
    QTest::newRow("app without name") << QByteArray(R"({"apps":[{"id":"x","kind":0}]})");
    QTest::newRow("app without kind") << QByteArray(R"({"apps":[{"id":"x","name":"x"}]})");
    QTest::newRow("cut") << QByteArray(R"({"apps":[)");
}

void VersionServiceClientTest::doesNotBelieveABrokenAnswer()
{
    QFETCH(const QByteArray, body);
    server->Enqueue(FaultServer::Json(200, body));
    VersionServiceClient client;
    Result<QVector<VersionServiceApp>> result;

    client.ListApps(QString(), nullptr, Into(&result));

    QTRY_VERIFY(result);
    QVERIFY(!result->success);
    QVERIFY(!result->errorDesc.isEmpty());
}

void VersionServiceClientTest::answersWhatIsOutstandingWhenItIsDestroyed()
{
    server->SetScript([](const auto&) { return FaultServer::Failing(FaultServer::Fault::Silence); });
    auto client = std::make_unique<VersionServiceClient>();
    Result<VersionServiceApp> result;
    client->GetApp(QStringLiteral("a1"), nullptr, Into(&result));
    QVERIFY(!result);

    client.reset();

    QVERIFY(result);
    QVERIFY(!result->success);
}

// Mostly it goes within the destructor of whoever asked, who is no longer whole.
void VersionServiceClientTest::callsNoContextWhenItIsDestroyed()
{
    server->SetScript([](const auto&) { return FaultServer::Failing(FaultServer::Fault::Silence); });
    auto client = std::make_unique<VersionServiceClient>();
    Result<VersionServiceApp> forSomebody;
    Result<VersionServiceApp> forNobodyInParticular;
    client->GetApp(QStringLiteral("a1"), this, Into(&forSomebody));
    client->GetApp(QStringLiteral("a2"), nullptr, Into(&forNobodyInParticular));

    client.reset();

    QVERIFY(!forSomebody);
    QVERIFY(forNobodyInParticular);
}

void VersionServiceClientTest::doesNotCallAContextThatIsGone()
{
    server->SetScript([](const auto&) { return FaultServer::Json(200, app); });
    VersionServiceClient client;
    Result<VersionServiceApp> forNobody;
    Result<VersionServiceApp> forSomebody;
    auto context = std::make_unique<QObject>();
    client.GetApp(QStringLiteral("a1"), context.get(), Into(&forNobody));
    context.reset();

    client.GetApp(QStringLiteral("a1"), this, Into(&forSomebody));

    QTRY_VERIFY(forSomebody);
    QTRY_COMPARE(server->GetRequestCount(), 2);
    QVERIFY(!forNobody);
}

RPA_TEST_MAIN(VersionServiceClientTest)
#include "tst_versionserviceclient.moc"
