#include "FaultServer.h"
#include "NativeSocket.h"
#include "TestApp.h"

#include <WbHttpModule/WbHttpClient.h>

#include <QCryptographicHash>
#include <QTcpServer>
#include <QTcpSocket>
#include <QThread>
#include <QtTest>

#include <array>
#include <numeric>
#include <optional>

using namespace std::chrono_literals;
using Fault = FaultServer::Fault;

Q_DECLARE_METATYPE(WbHttpError)

namespace
{
// A busy machine may be this late, in milliseconds; the answer ledger is stricter.
constexpr int lateness = 600;

WbHttpRequest Get(const FaultServer& server, const QString& path = QStringLiteral("/x"))
{
    WbHttpRequest request;
    request.url = server.GetUrl();
    request.url.setPath(path);
    request.limits.connect = 2000ms;
    request.limits.inactivity = 1000ms;
    request.limits.total = 2000ms;
    return request;
}

// Listens, but never takes a connection; those beyond the first two are left hanging by the kernel.
class FullListener
{
public:
    FullListener() : listener(NativeSocket::Listen(&port))
    {
        for (QTcpSocket& filler : fillers)
            filler.connectToHost(QHostAddress::LocalHost, port);
        fillers[0].waitForConnected(200);
    }
    ~FullListener() { NativeSocket::Close(listener); }

    quint16 GetPort() const { return port; }

private:
    quint16 port = 0;
    const NativeSocket::Handle listener;
    std::array<QTcpSocket, 3> fillers;
};

// Sends one request and waits for its answer.
WbHttpAnswer Ask(WbHttpClient* client, const WbHttpRequest& request)
{
    std::optional<WbHttpAnswer> received;
    client->Send(request, [&received](const WbHttpAnswer& answer) { received = answer; });
    [&] { QTRY_VERIFY(received.has_value()); }();
    return received.value_or(WbHttpAnswer());
}
} // namespace

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
    void sendsAnewOnAConnectionThatDiedWhileIdle();
    void countsAnAnswerWithoutBody();
    void givesARefusalWithItsBody();
    void refusesWhatMustNotBeSent_data();
    void refusesWhatMustNotBeSent();
    void doesNotBelieveABrokenAnswer_data();
    void doesNotBelieveABrokenAnswer();
    void takesARefusalWithABrokenBodyForARefusal();
    void refusesABodyOverTheCap_data();
    void refusesABodyOverTheCap();
    void endsARequestThatNobodyAnswers();
    void endsARequestThatDripsAtTheAbsoluteDeadline();
    void givesALargeAnswerMoreTime();
    void failsWhenNobodyListens();
    void failsWhenTheConnectionIsNeverAccepted();
    void refusesAServerItCannotVerify();
    void neverAnswersInsideSend();
    void answersOnTheThreadOfTheClient();
    void answersACancelledRequestOnce();
    void ignoresCancellingWhatIsAnswered();
    void answersEverythingWhenItIsDestroyed();
    void answersWhatIsSentWhileItIsDestroyed();
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

void WbHttpClientTest::sendsAnewOnAConnectionThatDiedWhileIdle()
{
    // Given: a server whose first answer is followed by the end of the connection
    FaultServer server;
    auto last = FaultServer::Json(200, "{}");
    server.Enqueue(last);
    server.Enqueue(FaultServer::Failing(Fault::Reset));
    server.Enqueue(FaultServer::Json(200, "{}"));
    WbHttpClient client;
    Ask(&client, Get(server));

    // When: the next request meets a connection that is reset before a byte came back
    auto request = Get(server);
    request.method = "PUT";
    request.body = QByteArray(100000, 'x');
    const auto answer = Ask(&client, request);

    // Then: it was sent once more, complete
    QVERIFY2(answer.IsSuccess(), qPrintable(answer.errorText));
    QCOMPARE(server.GetRequestCount(), 3);
    QCOMPARE(server.GetRequests().last().body, request.body);
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

void WbHttpClientTest::doesNotBelieveABrokenAnswer_data()
{
    QTest::addColumn<Fault>("fault");
    QTest::addColumn<WbHttpError>("error");

    const auto row = [](Fault fault, WbHttpError error) {
        QTest::newRow(FaultServer::NameOf(fault)) << fault << error;
    };
    row(Fault::CutWithLength, WbHttpError::ConnectionLost);
    row(Fault::CutWithoutLength, WbHttpError::BadAnswer);
    row(Fault::CutChunk, WbHttpError::ConnectionLost);
    row(Fault::BadChunkHeader, WbHttpError::ConnectionLost);
    row(Fault::WrongDigest, WbHttpError::DigestMismatch);
    row(Fault::Redirect, WbHttpError::Redirected);
    row(Fault::CompressionBomb, WbHttpError::BadAnswer);
    row(Fault::TransferCompression, WbHttpError::BadAnswer);
    row(Fault::HeaderFlood, WbHttpError::TooLarge);
    row(Fault::InterimFlood, WbHttpError::TooLarge);
    row(Fault::CloseBeforeAnswer, WbHttpError::ConnectionLost);
    row(Fault::CloseWithinHeader, WbHttpError::BadAnswer);
    row(Fault::Reset, WbHttpError::ConnectionLost);
    row(Fault::InvalidJson, WbHttpError::BadJson);
    row(Fault::DeepJson, WbHttpError::BadJson);
    row(Fault::DuplicateKeyJson, WbHttpError::BadJson);
    row(Fault::HugeContentLength, WbHttpError::TooLarge);
    row(Fault::BadContentLength, WbHttpError::BadAnswer);
    row(Fault::Silence, WbHttpError::TimedOut);
    row(Fault::NotHttp, WbHttpError::BadAnswer);
}

void WbHttpClientTest::doesNotBelieveABrokenAnswer()
{
    QFETCH(const Fault, fault);
    QFETCH(const WbHttpError, error);
    FaultServer server;
    server.SetScript([fault](const auto&) { return FaultServer::Failing(fault); });
    WbHttpClient client;
    auto request = Get(server);
    request.expectation = {true, true};

    const auto answer = Ask(&client, request);

    QVERIFY(!answer.IsSuccess());
    QCOMPARE(answer.error, error);
    QVERIFY(answer.body.isEmpty());
    QVERIFY(!answer.errorText.isEmpty());
}

void WbHttpClientTest::takesARefusalWithABrokenBodyForARefusal()
{
    FaultServer server;
    auto reply = FaultServer::Json(500, "<html>oops</html>");
    server.Enqueue(reply);
    WbHttpClient client;
    auto request = Get(server);
    request.expectation.json = true;

    const auto answer = Ask(&client, request);

    QCOMPARE(answer.error, WbHttpError::None);
    QCOMPARE(answer.status, 500);
    QVERIFY(answer.body.isEmpty());
}

void WbHttpClientTest::refusesABodyOverTheCap_data()
{
    QTest::addColumn<int>("bytes");
    QTest::addColumn<bool>("ok");

    QTest::newRow("at the cap") << 1000 << true;
    QTest::newRow("one over the cap") << 1001 << false;
}

void WbHttpClientTest::refusesABodyOverTheCap()
{
    QFETCH(const int, bytes);
    QFETCH(const bool, ok);
    FaultServer server;
    const QByteArray body(bytes, '1');
    server.SetScript([body](const auto&) { return FaultServer::Json(200, body); });
    WbHttpClient client;
    auto download = Get(server);
    download.limits.bodyBytes = 1000;
    auto upload = Get(server);
    upload.method = "POST";
    upload.body = body;
    upload.limits.bodyBytes = 1000;
    upload.expectation.json = false;

    QCOMPARE(Ask(&client, download).IsSuccess(), ok);
    const auto answer = Ask(&client, upload);

    QCOMPARE(answer.IsSuccess(), ok);
    QCOMPARE(server.GetRequestCount(), ok ? 2 : 1);
}

void WbHttpClientTest::endsARequestThatNobodyAnswers()
{
    FaultServer server;
    server.Enqueue(FaultServer::Failing(Fault::Silence));
    WbHttpClient client;
    auto request = Get(server);
    request.limits.inactivity = 300ms;
    QElapsedTimer time;
    time.start();

    const auto answer = Ask(&client, request);

    QCOMPARE(answer.error, WbHttpError::TimedOut);
    QVERIFY(time.elapsed() >= 300);
    QVERIFY(time.elapsed() < 300 + lateness);
}

void WbHttpClientTest::endsARequestThatDripsAtTheAbsoluteDeadline()
{
    // Given: an answer that never pauses long enough for the inactivity limit
    FaultServer server;
    auto reply = FaultServer::Data(QByteArray(1000, '1'), 1);
    reply.fault = Fault::SlowDrip;
    server.Enqueue(reply);
    WbHttpClient client;
    auto request = Get(server);
    request.limits.total = 400ms;
    QElapsedTimer time;
    time.start();

    const auto answer = Ask(&client, request);

    QCOMPARE(answer.error, WbHttpError::TimedOut);
    QVERIFY(time.elapsed() >= 400);
    QVERIFY(time.elapsed() < 400 + lateness);
}

void WbHttpClientTest::givesALargeAnswerMoreTime()
{
    FaultServer server;
    auto reply = FaultServer::Data(QByteArray(60, '1'), 1);
    reply.fault = Fault::SlowDrip;
    server.Enqueue(reply);
    WbHttpClient client;
    auto request = Get(server);
    request.limits.total = 100ms;
    request.limits.slowestBytesPerSecond = 20; // 60 bytes: three more seconds

    QVERIFY(Ask(&client, request).IsSuccess());
}

void WbHttpClientTest::failsWhenNobodyListens()
{
    WbHttpClient client;
    WbHttpRequest request;
    {
        QTcpServer gone;
        QVERIFY(gone.listen(QHostAddress::LocalHost));
        request.url = QUrl(QStringLiteral("http://127.0.0.1:%1/").arg(gone.serverPort()));
    }

    QCOMPARE(Ask(&client, request).error, WbHttpError::CannotConnect);
}

void WbHttpClientTest::failsWhenTheConnectionIsNeverAccepted()
{
    // Given: a listener whose queue is full, so that connecting takes for ever
    FullListener listener;
    WbHttpClient client;
    WbHttpRequest request;
    request.url = QUrl(QStringLiteral("http://127.0.0.1:%1/").arg(listener.GetPort()));
    request.limits.connect = 200ms;
    QElapsedTimer time;
    time.start();

    const auto answer = Ask(&client, request);

    QCOMPARE(answer.error, WbHttpError::CannotConnect);
    QVERIFY(time.elapsed() < 200 + lateness);
}

void WbHttpClientTest::refusesAServerItCannotVerify()
{
    // Given: something that listens but does not speak TLS
    FaultServer server;
    WbHttpClient client;
    auto request = Get(server);
    request.url.setScheme(QStringLiteral("https"));

    const auto answer = Ask(&client, request);

    QVERIFY(answer.error == WbHttpError::TlsFailed || answer.error == WbHttpError::TimedOut);
    QCOMPARE(server.GetRequestCount(), 0);
}

void WbHttpClientTest::neverAnswersInsideSend()
{
    WbHttpClient client;
    int answers = 0;

    client.Send(WbHttpRequest(), [&answers](const WbHttpAnswer&) { ++answers; });

    QCOMPARE(answers, 0);
    QCOMPARE(client.GetOutstandingCount(), 1);
    QTRY_COMPARE(answers, 1);
    QCOMPARE(client.GetOutstandingCount(), 0);
}

void WbHttpClientTest::answersOnTheThreadOfTheClient()
{
    FaultServer server;
    WbHttpClient client;
    QThread* answeredOn = nullptr;

    client.Send(Get(server), [&answeredOn](const WbHttpAnswer&) { answeredOn = QThread::currentThread(); });

    QTRY_COMPARE(answeredOn, thread());
}

void WbHttpClientTest::answersACancelledRequestOnce()
{
    FaultServer server;
    server.SetScript([](const auto&) { return FaultServer::Failing(Fault::Silence); });
    WbHttpClient client;
    QVector<WbHttpError> errors;
    const auto id =
        client.Send(Get(server), [&errors](const WbHttpAnswer& answer) { errors.append(answer.error); });
    QTRY_COMPARE(server.GetRequestCount(), 1);

    client.Cancel(id);
    client.Cancel(id);

    QVERIFY(errors.isEmpty());
    QTRY_COMPARE(client.GetOutstandingCount(), 0);
    QCoreApplication::processEvents();
    QCOMPARE(errors, QVector<WbHttpError>{WbHttpError::Cancelled});
}

void WbHttpClientTest::ignoresCancellingWhatIsAnswered()
{
    FaultServer server;
    WbHttpClient client;
    int answers = 0;
    const auto id = client.Send(Get(server), [&answers](const WbHttpAnswer&) { ++answers; });
    QTRY_COMPARE(answers, 1);

    client.Cancel(id);
    client.Cancel(id + 100);
    Ask(&client, Get(server));

    QCOMPARE(answers, 1);
}

void WbHttpClientTest::answersEverythingWhenItIsDestroyed()
{
    FaultServer server;
    server.SetScript([](const auto&) { return FaultServer::Failing(Fault::Silence); });
    auto client = std::make_unique<WbHttpClient>();
    QVector<int> answered;
    for (int i = 0; i < 40; ++i) {
        client->Send(Get(server), [&answered, i](const WbHttpAnswer& answer) {
            QCOMPARE(answer.error, WbHttpError::Cancelled);
            answered.append(i);
        });
    }

    client.reset();

    QVector<int> expected(40);
    std::iota(expected.begin(), expected.end(), 0);
    QCOMPARE(answered, expected);
}

void WbHttpClientTest::answersWhatIsSentWhileItIsDestroyed()
{
    FaultServer server;
    server.SetScript([](const auto&) { return FaultServer::Failing(Fault::Silence); });
    auto client = std::make_unique<WbHttpClient>();
    WbHttpClient* raw = client.get();
    int answers = 0;
    client->Send(Get(server), [&](const WbHttpAnswer&) {
        ++answers;
        raw->Send(Get(server), [&answers](const WbHttpAnswer& answer) {
            QCOMPARE(answer.error, WbHttpError::Cancelled);
            ++answers;
        });
    });

    client.reset();

    QCOMPARE(answers, 2);
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
