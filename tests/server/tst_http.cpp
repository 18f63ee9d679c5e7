// SPDX-License-Identifier: Apache-2.0

#include "HttpFixture.h"
#include "base/Loopback.h"

#include <QElapsedTimer>
#include <QTest>

using namespace http_fixture;

class HttpTest : public QObject
{
    Q_OBJECT

private slots:
    void refusesWhatBreaksALimit_data();
    void refusesWhatBreaksALimit();
    void answersAClientThatBreaksALimitAndKeepsSending();
    void servesRequestsOfOneConnectionOneAfterAnother();
    void takesABodyInChunks();
    void asksForTheBodyWhenTheClientWaits();
    void refusesByTheHeadWithoutReadingTheBody();
    void dropsACutBody();
    void dropsASlowHead();
    void dropsASlowBody();
    void dropsABodyThatStalls();
    void dropsAReaderThatStalls();
    void readsNoMoreOfABodyThanTheRouteTakes();
    void dropsAnIdleConnection();
    void servesOthersWhileClientsAreSlow();
    void refusesConnectionsBeyondTheLimit();
    void refusesConnectionsBeyondTheLimitOfTheirAddress();
    void refusesBodiesBeyondTheMemoryLimit();
    void countsABodyInChunksAsItGrows();
    void refusesAnswersBeyondTheMemoryOfTheirAccount();
    void answersRequestsInFlightWhenStopped();
    void endsRequestsThatOutliveTheGrace();
    void knowsLoopbackNames_data();
    void knowsLoopbackNames();
};

void HttpTest::refusesWhatBreaksALimit_data()
{
    QTest::addColumn<QByteArray>("request");
    QTest::addColumn<int>("status");
    const QByteArray host = "Host: h\r\n";
    QTest::newRow("head of 16 kB") << "GET / HTTP/1.1\r\n" + host + "X: " + QByteArray(17000, 'x') +
                                          "\r\n\r\n"
                                   << 431;
    QTest::newRow("address of 4 kB") << "GET /" + QByteArray(4095, 'x') + " HTTP/1.1\r\n" + host + "\r\n"
                                     << 200;
    QTest::newRow("address beyond 4 kB") << "GET /" + QByteArray(4096, 'x') + " HTTP/1.1\r\n" + host + "\r\n"
                                         << 414;
    QTest::newRow("announced body at the limit")
        << "PUT / HTTP/1.1\r\n" + host + "Content-Length: 100000\r\n\r\n" + QByteArray(100000, 'x') << 200;
    QTest::newRow("announced body beyond the limit")
        << "PUT / HTTP/1.1\r\n" + host + "Content-Length: 100001\r\n\r\n"
        << 413;
    QTest::newRow("chunked body beyond the limit")
        << "PUT / HTTP/1.1\r\n" + host + "Transfer-Encoding: chunked\r\n\r\n186A1\r\n" +
               QByteArray(100001, 'x') + "\r\n0\r\n\r\n"
        << 413;
    QTest::newRow("no HTTP") << QByteArray("hello\r\n\r\n") << 400;
    QTest::newRow("two lengths") << "PUT / HTTP/1.1\r\n" + host +
                                        "Content-Length: 1\r\nContent-Length: 2\r\n\r\nxx"
                                 << 400;
    QTest::newRow("length and chunks")
        << "PUT / HTTP/1.1\r\n" + host + "Content-Length: 1\r\nTransfer-Encoding: chunked\r\n\r\n0\r\n\r\n"
        << 400;
    QTest::newRow("bad chunk") << "PUT / HTTP/1.1\r\n" + host + "Transfer-Encoding: chunked\r\n\r\nzz\r\n"
                               << 400;
    QTest::newRow("negative length") << "PUT / HTTP/1.1\r\n" + host + "Content-Length: -1\r\n\r\n" << 400;
}

void HttpTest::refusesWhatBreaksALimit()
{
    QFETCH(QByteArray, request);
    QFETCH(int, status);
    Running running;
    RawClient client(running.port);

    client.Send(request);
    const QByteArray answer = client.Receive();

    QCOMPARE(RawClient::StatusOf(answer), status);
    QCOMPARE(running.echo.handled.load(), status == 200 ? 1 : 0);
    QCOMPARE(running.echo.refused.load(), status == 200 ? 0 : 1);
    QVERIFY(status == 200 || answer.contains("\"message\":"));
}

void HttpTest::answersAClientThatBreaksALimitAndKeepsSending()
{
    Running running;
    RawClient client(running.port);

    client.Send("PUT / HTTP/1.1\r\nHost: h\r\nContent-Length: 3000000\r\n\r\n");
    client.Send(QByteArray(3000000, 'x'));

    QCOMPARE(RawClient::StatusOf(client.Receive()), 413);
}

void HttpTest::servesRequestsOfOneConnectionOneAfterAnother()
{
    Running running;
    RawClient client(running.port);

    for (int i = 0; i < 3; ++i) {
        client.Send("PUT / HTTP/1.1\r\nHost: h\r\nContent-Length: 4\r\n\r\nbody");
        QVERIFY(client.Receive().endsWith("\r\n\r\n4"));
    }

    QCOMPARE(running.server.OpenConnections(), 1);
}

void HttpTest::takesABodyInChunks()
{
    Running running;
    RawClient client(running.port);

    client.Send(
        "PUT / HTTP/1.1\r\nHost: h\r\nTransfer-Encoding: chunked\r\n\r\n3\r\nabc\r\n4\r\ndefg\r\n0\r\n\r\n");

    QVERIFY(client.Receive().endsWith("\r\n\r\n7"));
}

void HttpTest::asksForTheBodyWhenTheClientWaits()
{
    Running running;
    RawClient client(running.port);

    client.Send("PUT / HTTP/1.1\r\nHost: h\r\nExpect: 100-continue\r\nContent-Length: 4\r\n\r\n");
    QVERIFY(client.socket.waitForReadyRead(RawClient::waitMs));
    QCOMPARE(client.socket.readAll(), QByteArray("HTTP/1.1 100 Continue\r\n\r\n"));
    client.Send("body");

    QVERIFY(client.Receive().endsWith("\r\n\r\n4"));
}

void HttpTest::refusesByTheHeadWithoutReadingTheBody()
{
    Running running;
    RawClient client(running.port);

    client.Send("PUT /refused HTTP/1.1\r\nHost: h\r\nContent-Length: 50000\r\n\r\n");

    QCOMPARE(RawClient::StatusOf(client.Receive()), 403);
    QCOMPARE(running.echo.handled.load(), 0);
}

void HttpTest::dropsACutBody()
{
    Running running;
    {
        RawClient client(running.port);
        client.Send("PUT / HTTP/1.1\r\nHost: h\r\nContent-Length: 1000\r\n\r\nonly a part");
        client.socket.disconnectFromHost();
        QVERIFY(client.WaitUntilClosed());
    }

    QTRY_COMPARE(running.server.OpenConnections(), 0);
    QCOMPARE(running.echo.handled.load(), 0);
}

void HttpTest::dropsASlowHead()
{
    Running running;
    RawClient client(running.port);
    QElapsedTimer elapsed;
    elapsed.start();

    client.Send("GET / HTTP/1.1\r\nHost:");

    QVERIFY(client.WaitUntilClosed());
    QVERIFY(elapsed.elapsed() >= 900 && elapsed.elapsed() < 5000);
    QCOMPARE(running.echo.handled.load(), 0);
}

void HttpTest::dropsASlowBody()
{
    Running running;
    RawClient client(running.port);

    client.Send("PUT / HTTP/1.1\r\nHost: h\r\nContent-Length: 1000\r\n\r\nslow");

    QVERIFY(client.WaitUntilClosed());
    QCOMPARE(running.echo.handled.load(), 0);
}

void HttpTest::dropsABodyThatStalls()
{
    HttpLimits limits = SmallLimits();
    limits.body = 60s;
    limits.stall = 300ms;
    Running running(limits);
    RawClient client(running.port);
    RawClient steady(running.port);
    QElapsedTimer elapsed;
    elapsed.start();

    client.Send("PUT / HTTP/1.1\r\nHost: h\r\nContent-Length: 1000\r\n\r\nslow");
    steady.Send("PUT / HTTP/1.1\r\nHost: h\r\nTransfer-Encoding: chunked\r\n\r\n");
    while (client.socket.state() == QAbstractSocket::ConnectedState &&
           elapsed.elapsed() < RawClient::waitMs) {
        steady.Send("1\r\nx\r\n");
        client.socket.waitForReadyRead(20);
    }
    steady.Send("0\r\n\r\n");

    QVERIFY(client.socket.state() != QAbstractSocket::ConnectedState);
    QVERIFY(elapsed.elapsed() >= 290);
    QCOMPARE(RawClient::StatusOf(steady.Receive()), 200);
}

void HttpTest::dropsAReaderThatStalls()
{
    HttpLimits limits = SmallLimits();
    limits.body = 60s;
    limits.stall = 300ms;
    Running running(limits);
    RawClient client(running.port);
    client.socket.setReadBufferSize(1000);

    client.Send("GET /large HTTP/1.1\r\nHost: h\r\n\r\n");

    QTRY_COMPARE(running.server.OpenConnections(), 1);
    QTRY_COMPARE(running.server.OpenConnections(), 0);
}

void HttpTest::readsNoMoreOfABodyThanTheRouteTakes()
{
    Running running;
    RawClient chunks(running.port);
    RawClient length(running.port);

    chunks.Send("PUT /short HTTP/1.1\r\nHost: h\r\nTransfer-Encoding: chunked\r\n\r\nb\r\n");
    length.Send("PUT /short HTTP/1.1\r\nHost: h\r\nContent-Length: 11\r\n\r\n");

    QCOMPARE(chunks.ReceiveStatus(), 413);
    QCOMPARE(length.ReceiveStatus(), 413);
    QCOMPARE(running.echo.handled.load(), 0);
}

void HttpTest::dropsAnIdleConnection()
{
    Running running;
    RawClient client(running.port);
    client.Send(get);
    QCOMPARE(RawClient::StatusOf(client.Receive()), 200);

    QVERIFY(client.WaitUntilClosed());
}

void HttpTest::servesOthersWhileClientsAreSlow()
{
    Running running;
    std::vector<std::unique_ptr<RawClient>> slow;
    for (int i = 0; i < 4; ++i) {
        slow.push_back(std::make_unique<RawClient>(running.port));
        slow.back()->Send("GET / HT");
    }
    QElapsedTimer elapsed;
    elapsed.start();

    RawClient quick(running.port);
    quick.Send(get);

    QCOMPARE(RawClient::StatusOf(quick.Receive()), 200);
    QVERIFY(elapsed.elapsed() < 900);
}

void HttpTest::refusesConnectionsBeyondTheLimit()
{
    Running running;
    std::vector<std::unique_ptr<RawClient>> clients;
    for (int i = 0; i < 5; ++i) {
        clients.push_back(std::make_unique<RawClient>(running.port));
        clients.back()->Send(get);
        QCOMPARE(RawClient::StatusOf(clients.back()->Receive()), 200);
    }

    RawClient beyond(running.port);
    const QByteArray answer = beyond.Receive();
    QCOMPARE(RawClient::StatusOf(answer), 503);
    QVERIFY(answer.contains("Retry-After: 2"));

    clients.clear();
    QTRY_COMPARE(running.server.OpenConnections(), 0);
    RawClient later(running.port);
    later.Send(get);
    QCOMPARE(RawClient::StatusOf(later.Receive()), 200);
}

void HttpTest::refusesConnectionsBeyondTheLimitOfTheirAddress()
{
    HttpLimits limits = SmallLimits();
    limits.connectionsPerAddress = 2;
    Running running(limits);
    const QString here = QStringLiteral("127.0.0.2");
    auto first = std::make_unique<RawClient>(running.port, here);
    RawClient second(running.port, here);
    QTRY_COMPARE(running.server.OpenConnections(), 2);

    RawClient beyond(running.port, here);
    RawClient other(running.port, QStringLiteral("127.0.0.3"));
    other.Send(get);
    QCOMPARE(beyond.ReceiveStatus(), 503);
    QCOMPARE(other.ReceiveStatus(), 200);

    first.reset();
    QTRY_COMPARE(running.server.OpenConnections(), 2);
    RawClient later(running.port, here);
    later.Send(get);
    QCOMPARE(later.ReceiveStatus(), 200);
}

void HttpTest::refusesBodiesBeyondTheMemoryLimit()
{
    Running running;
    RawClient first(running.port);
    first.Send("PUT /held HTTP/1.1\r\nHost: h\r\nContent-Length: 90000\r\n\r\n" + QByteArray(90000, 'x'));
    QTRY_COMPARE(running.echo.handled.load(), 1);

    RawClient second(running.port);
    second.Send("PUT / HTTP/1.1\r\nHost: h\r\nContent-Length: 90000\r\n\r\n");
    const QByteArray answer = second.Receive();
    QCOMPARE(RawClient::StatusOf(answer), 503);
    QVERIFY(answer.contains("Retry-After"));

    QVERIFY(running.echo.AnswerHeld());
    QCOMPARE(RawClient::StatusOf(first.Receive()), 200);
    RawClient third(running.port);
    third.Send("PUT / HTTP/1.1\r\nHost: h\r\nContent-Length: 90000\r\n\r\n" + QByteArray(90000, 'x'));
    QCOMPARE(RawClient::StatusOf(third.Receive()), 200);
}

void HttpTest::countsABodyInChunksAsItGrows()
{
    Running running;
    RawClient first(running.port);
    first.Send("PUT /?a HTTP/1.1\r\nHost: h\r\nTransfer-Encoding: chunked\r\n\r\n");
    QTRY_COMPARE(running.server.OpenConnections(), 1);
    QCOMPARE(running.server.BodyBytes(), 0);

    first.Send("15F90\r\n" + QByteArray(90000, 'x') + "\r\n");
    QTRY_VERIFY(running.server.BodyBytes() >= 90000);
    first.Send("0\r\n\r\n");

    QCOMPARE(first.ReceiveStatus(), 200);
    QTRY_COMPARE(running.server.BodyBytes(), 0);
}

void HttpTest::refusesAnswersBeyondTheMemoryOfTheirAccount()
{
    HttpLimits limits = SmallLimits();
    limits.bodyBytesInFlight = 10LL * largeAnswer;
    limits.bodyBytesPerAccount = 2 * largeAnswer;
    Running running(limits);
    std::vector<std::unique_ptr<RawClient>> slow;
    for (int i = 0; i < 3; ++i) {
        slow.push_back(std::make_unique<RawClient>(running.port));
        slow.back()->socket.setReadBufferSize(1000);
        slow.back()->Send("GET /large?a HTTP/1.1\r\nHost: h\r\n\r\n");
        QVERIFY(slow.back()->socket.waitForReadyRead(RawClient::waitMs));
    }
    QCOMPARE(RawClient::StatusOf(slow[0]->socket.peek(20)), 200);
    QCOMPARE(RawClient::StatusOf(slow[1]->socket.peek(20)), 200);
    QCOMPARE(RawClient::StatusOf(slow[2]->socket.peek(20)), 503);

    RawClient other(running.port);
    other.Send("GET /large?b HTTP/1.1\r\nHost: h\r\n\r\n");

    QCOMPARE(other.ReceiveStatus(), 200);
}

void HttpTest::answersRequestsInFlightWhenStopped()
{
    Running running;
    RawClient idle(running.port);
    idle.Send(get);
    QCOMPARE(RawClient::StatusOf(idle.Receive()), 200);
    RawClient busy(running.port);
    busy.Send("GET /held HTTP/1.1\r\nHost: h\r\n\r\n");
    QTRY_COMPARE(running.echo.handled.load(), 2);

    running.server.Stop(10s);
    QVERIFY(idle.WaitUntilClosed());
    QVERIFY(running.echo.AnswerHeld());
    const QByteArray answer = busy.Receive();

    QVERIFY(answer.endsWith("released"));
    QVERIFY(answer.contains("Connection: close"));
    QVERIFY(busy.WaitUntilClosed());
}

void HttpTest::endsRequestsThatOutliveTheGrace()
{
    Running running;
    RawClient client(running.port);
    client.Send("GET /held HTTP/1.1\r\nHost: h\r\n\r\n");
    QTRY_COMPARE(running.echo.handled.load(), 1);

    running.server.Stop(1s);

    QVERIFY(client.WaitUntilClosed());
}

void HttpTest::knowsLoopbackNames_data()
{
    QTest::addColumn<QString>("host");
    QTest::addColumn<bool>("loopback");
    QTest::newRow("localhost") << QStringLiteral("localhost") << true;
    QTest::newRow("IPv4") << QStringLiteral("127.0.0.1") << true;
    QTest::newRow("IPv6") << QStringLiteral("::1") << true;
    QTest::newRow("any address") << QStringLiteral("0.0.0.0") << false;
    QTest::newRow("a name that begins alike") << QStringLiteral("localhost.example") << false;
    QTest::newRow("a name of digits") << QStringLiteral("127.example") << false;
}

void HttpTest::knowsLoopbackNames()
{
    QFETCH(QString, host);
    QTEST(IsLoopback(host), "loopback");
}

QTEST_GUILESS_MAIN(HttpTest)
#include "tst_http.moc"
