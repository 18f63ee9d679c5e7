// SPDX-License-Identifier: Apache-2.0

#include "HttpClientFixture.h"
#include "TestApp.h"

#include <QCryptographicHash>
#include <QtTest>

using namespace std::chrono_literals;
using namespace HttpClientFixture;

// What is sent, and what a right answer brings.
class WbHttpClientTest : public QObject
{
    Q_OBJECT

private slots:
    void namesItsLibraries();
    void bringsStatusHeadersAndBody();
    void sendsMethodHeadersAndBody_data();
    void sendsMethodHeadersAndBody();
    void sendsATextAsUtf8WithItsDigest();
    void sendsALargeTextFromAnotherThread();
    void sendsTheTokenToTheServerItWasMeantFor();
    void keepsTheTokenFromARedirectTarget();
    void asksForNoCompression();
    void usesTheConnectionAgain();
    void countsAnAnswerWithoutBody();
    void givesARefusalWithItsBody();
    void judgesAnAppAwayFromTheCaller();
    void refusesWhatMustNotBeSent_data();
    void refusesWhatMustNotBeSent();
    void sendsMoreRequestsThanItHasPlacesFor();
};

void WbHttpClientTest::namesItsLibraries()
{
    QVERIFY(QRegularExpression(QStringLiteral("^libcurl \\d+\\.\\d+\\.\\d+"))
                .match(WbHttpClient::GetLibraryName())
                .hasMatch());
    QVERIFY(QRegularExpression(QStringLiteral("^(OpenSSL \\d|Schannel$)"))
                .match(WbHttpClient::GetTlsName())
                .hasMatch());
}

void WbHttpClientTest::bringsStatusHeadersAndBody()
{
    FaultServer server;
    server.Enqueue(FaultServer::Data("{\"a\":1}", 7));
    WbHttpClient client;

    const auto answer = Ask(&client, Get(server));

    QVERIFY(answer.IsSuccess());
    QCOMPARE(answer.status, 200);
    QCOMPARE(answer.headers.value("etag"), QByteArray("\"7\""));
    QCOMPARE(answer.body, QByteArray("{\"a\":1}"));
    QVERIFY(answer.errorText.isEmpty());
}

void WbHttpClientTest::sendsMethodHeadersAndBody_data()
{
    QTest::addColumn<QByteArray>("method");
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QByteArray>("length");

    QTest::newRow("get") << QByteArray("GET") << QByteArray() << QByteArray();
    QTest::newRow("post") << QByteArray("POST") << QByteArray("{}") << QByteArray("2");
    QTest::newRow("post of nothing") << QByteArray("POST") << QByteArray() << QByteArray("0");
    QTest::newRow("put") << QByteArray("PUT") << QByteArray("abc") << QByteArray("3");
    QTest::newRow("patch") << QByteArray("PATCH") << QByteArray("abc") << QByteArray("3");
    QTest::newRow("delete") << QByteArray("DELETE") << QByteArray() << QByteArray();
}

void WbHttpClientTest::sendsMethodHeadersAndBody()
{
    QFETCH(const QByteArray, method);
    QFETCH(const QByteArray, body);
    QFETCH(const QByteArray, length);
    FaultServer server;
    WbHttpClient client;
    auto request = Get(server, QStringLiteral("/a/b"));
    request.method = method;
    request.body = body;
    request.headers = {{"If-Match", "\"3\""}, {"Empty", ""}};

    Ask(&client, request);

    const auto seen = server.GetRequests().value(0);
    QCOMPARE(seen.method, method);
    QCOMPARE(seen.path, QByteArray("/a/b"));
    QCOMPARE(seen.body, body);
    QCOMPARE(seen.headers.value("content-length"), length);
    QCOMPARE(seen.headers.value("if-match"), QByteArray("\"3\""));
    QVERIFY(seen.headers.contains("empty"));
    QVERIFY(!seen.headers.contains("expect"));
    QVERIFY(!seen.headers.contains("content-type"));
}

void WbHttpClientTest::sendsATextAsUtf8WithItsDigest()
{
    FaultServer server;
    WbHttpClient client;
    auto request = Get(server);
    request.method = "PUT";
    request.bodyText = QStringLiteral("{\"名称\":\"值\"}");
    request.digestBody = true;

    const auto answer = Ask(&client, request);

    const auto utf8 = request.bodyText.toUtf8();
    const auto digest = QCryptographicHash::hash(utf8, QCryptographicHash::Sha256);
    const auto seen = server.GetRequests().value(0);
    QCOMPARE(seen.body, utf8);
    QCOMPARE(seen.headers.value("content-digest"), QByteArray("sha-256=:" + digest.toBase64() + ":"));
    QCOMPARE(answer.sentDigest, digest);
}

void WbHttpClientTest::sendsALargeTextFromAnotherThread()
{
    FaultServer server;
    WbHttpClient client;
    auto request = Get(server);
    request.method = "POST";
    request.bodyText = QString(3 * 1024 * 1024, QChar(0x7248));
    request.digestBody = true;
    request.limits.inactivity = 5s;
    request.limits.total = 10s;

    Ask(&client, request);

    QCOMPARE(server.GetRequests().value(0).body.size(), 9 * 1024 * 1024);
}

void WbHttpClientTest::sendsTheTokenToTheServerItWasMeantFor()
{
    FaultServer server;
    WbHttpClient client;
    auto request = Get(server);
    request.bearerToken = "secret";

    Ask(&client, request);

    QCOMPARE(server.GetRequests().value(0).headers.value("authorization"), QByteArray("Bearer secret"));
}

void WbHttpClientTest::keepsTheTokenFromARedirectTarget()
{
    FaultServer server;
    FaultServer other;
    auto reply = FaultServer::Failing(Fault::Redirect);
    reply.location = other.GetUrl().toEncoded();
    server.Enqueue(reply);
    WbHttpClient client;
    auto request = Get(server);
    request.bearerToken = "secret";

    const auto answer = Ask(&client, request);

    QCOMPARE(answer.error, WbHttpError::Redirected);
    QCOMPARE(other.GetConnectionCount(), 0);
}

void WbHttpClientTest::asksForNoCompression()
{
    FaultServer server;
    WbHttpClient client;

    Ask(&client, Get(server));

    QCOMPARE(server.GetRequests().value(0).headers.value("accept-encoding"), QByteArray("identity"));
}

void WbHttpClientTest::usesTheConnectionAgain()
{
    FaultServer server;
    WbHttpClient client;

    for (int i = 0; i < 5; ++i)
        Ask(&client, Get(server));

    QCOMPARE(server.GetRequestCount(), 5);
    QCOMPARE(server.GetConnectionCount(), 1);
}

void WbHttpClientTest::countsAnAnswerWithoutBody()
{
    FaultServer server;
    FaultServer::Reply reply;
    reply.status = 204;
    server.Enqueue(reply);
    WbHttpClient client;

    QVERIFY(Ask(&client, Get(server)).IsSuccess());
}

void WbHttpClientTest::givesARefusalWithItsBody()
{
    FaultServer server;
    server.Enqueue(FaultServer::Refusal(409, "name-taken", QStringLiteral("名称已存在")));
    WbHttpClient client;
    auto request = Get(server);
    request.expectation = {true, true};

    const auto answer = Ask(&client, request);

    QCOMPARE(answer.error, WbHttpError::None);
    QVERIFY(!answer.IsSuccess());
    QCOMPARE(answer.status, 409);
    QVERIFY(answer.body.contains("name-taken"));
}

void WbHttpClientTest::judgesAnAppAwayFromTheCaller()
{
    const QByteArray app = R"({"uiData":{"pages":[]},"processData":{"processes":[]}})";
    FaultServer server;
    server.Enqueue(FaultServer::Data(app, 1));
    server.Enqueue(FaultServer::Data("[]", 1));
    server.Enqueue(FaultServer::Refusal(404, "not-found", QStringLiteral("不存在")));
    WbHttpClient client;
    WbHttpRequest request = Get(server);
    request.expectation.contentDigest = true;
    request.expectation.outline = true;
    QVector<QByteArray> judged;
    QThread* judge = nullptr;
    request.expectation.judge = [&](const QByteArray& body) {
        judged.append(body);
        judge = QThread::currentThread();
        return QStringLiteral("不行");
    };

    QCOMPARE(Ask(&client, request).verdict, QStringLiteral("不行"));
    QVERIFY(Ask(&client, request).verdict.isEmpty());
    QVERIFY(Ask(&client, request).verdict.isEmpty());

    QCOMPARE(judged, QVector<QByteArray>{app});
    QVERIFY(judge && judge != QThread::currentThread());
}

void WbHttpClientTest::refusesWhatMustNotBeSent_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<QByteArray>("header");
    QTest::addColumn<QByteArray>("token");
    QTest::addColumn<bool>("hasSecretBody");

    const QByteArray none;
    const QString local = QStringLiteral("http://127.0.0.1:1/");
    QTest::newRow("no address") << QString() << none << none << false;
    QTest::newRow("relative address") << QStringLiteral("/apps") << none << none << false;
    QTest::newRow("file") << QStringLiteral("file:///etc/passwd") << none << none << false;
    QTest::newRow("ftp") << QStringLiteral("ftp://127.0.0.1/") << none << none << false;
    QTest::newRow("user in the address") << QStringLiteral("http://u:p@127.0.0.1/") << none << none << false;
    QTest::newRow("line break in a header") << local << QByteArray("a\r\nEvil: 1") << none << false;
    QTest::newRow("line break in the token") << local << none << QByteArray("t\r\nEvil: 1") << false;
    QTest::newRow("token in the clear")
        << QStringLiteral("http://192.0.2.1/") << none << QByteArray("t") << false;
    QTest::newRow("password in the clear") << QStringLiteral("http://192.0.2.1/") << none << none << true;
    QTest::newRow("host that looks local")
        << QStringLiteral("http://127.0.0.1.example.org/") << none << QByteArray("t") << false;
}

void WbHttpClientTest::refusesWhatMustNotBeSent()
{
    QFETCH(const QString, address);
    QFETCH(const QByteArray, header);
    QFETCH(const QByteArray, token);
    QFETCH(const bool, hasSecretBody);
    WbHttpClient client;
    WbHttpRequest request;
    request.url = QUrl(address);
    if (!header.isEmpty())
        request.headers = {{"Version-Name", header}};
    request.bearerToken = token;
    request.hasSecretBody = hasSecretBody;

    const auto answer = Ask(&client, request);

    QCOMPARE(answer.error, WbHttpError::BadRequest);
    QVERIFY(!answer.errorText.isEmpty());
    QCOMPARE(answer.status, 0);
}

void WbHttpClientTest::sendsMoreRequestsThanItHasPlacesFor()
{
    FaultServer server;
    server.SetScript([](const auto&) { return FaultServer::Json(200, "{}"); });
    WbHttpClient client;
    int answers = 0;

    for (int i = 0; i < 100; ++i)
        client.Send(Get(server),
                    [&answers](const WbHttpAnswer& answer) { answers += answer.IsSuccess() ? 1 : 0; });

    QTRY_COMPARE(answers, 100);
    QVERIFY(server.GetConnectionCount() <= 16);
}

RPA_TEST_MAIN(WbHttpClientTest)

#include "tst_wbhttpclient.moc"
