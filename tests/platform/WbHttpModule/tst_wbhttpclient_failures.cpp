// SPDX-License-Identifier: Apache-2.0

#include "HttpClientFixture.h"
#include "NativeSocket.h"
#include "TestApp.h"

#include <QTcpServer>
#include <QTcpSocket>
#include <QtTest>

#include <array>

using namespace std::chrono_literals;
using namespace HttpClientFixture;

namespace
{
// A busy machine may be this late, in milliseconds; the answer ledger is stricter.
constexpr int lateness = 600;

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
} // namespace

// Answers that are broken, too large, late or never come.
class WbHttpClientFailuresTest : public QObject
{
    Q_OBJECT

private slots:
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
};

void WbHttpClientFailuresTest::doesNotBelieveABrokenAnswer_data()
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

void WbHttpClientFailuresTest::doesNotBelieveABrokenAnswer()
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

void WbHttpClientFailuresTest::takesARefusalWithABrokenBodyForARefusal()
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

void WbHttpClientFailuresTest::refusesABodyOverTheCap_data()
{
    QTest::addColumn<int>("bytes");
    QTest::addColumn<bool>("ok");

    QTest::newRow("at the cap") << 1000 << true;
    QTest::newRow("one over the cap") << 1001 << false;
}

void WbHttpClientFailuresTest::refusesABodyOverTheCap()
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

void WbHttpClientFailuresTest::endsARequestThatNobodyAnswers()
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

void WbHttpClientFailuresTest::endsARequestThatDripsAtTheAbsoluteDeadline()
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

void WbHttpClientFailuresTest::givesALargeAnswerMoreTime()
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

void WbHttpClientFailuresTest::failsWhenNobodyListens()
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

void WbHttpClientFailuresTest::failsWhenTheConnectionIsNeverAccepted()
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

void WbHttpClientFailuresTest::refusesAServerItCannotVerify()
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

RPA_TEST_MAIN(WbHttpClientFailuresTest)

#include "tst_wbhttpclient_failures.moc"
