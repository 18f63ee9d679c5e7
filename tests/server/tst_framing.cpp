// SPDX-License-Identifier: Apache-2.0

#include "HttpFixture.h"

#include <QTest>

using namespace http_fixture;

// Requests that the server and whoever sits in between could understand differently.
class FramingTest : public QObject
{
    Q_OBJECT

private slots:
    void refusesWhatCouldBeReadInTwoWays_data();
    void refusesWhatCouldBeReadInTwoWays();
    void takesNothingAfterARefusedRequestForAnother();
    void answersToHeadWithoutABody();
    void asksOnlyForItselfByItsNames_data();
    void asksOnlyForItselfByItsNames();
};

void FramingTest::refusesWhatCouldBeReadInTwoWays_data()
{
    QTest::addColumn<QByteArray>("request");
    QTest::addColumn<int>("status");
    const QByteArray put = "PUT / HTTP/1.1\r\nHost: h\r\n";
    const QByteArray chunks = "1\r\nx\r\n0\r\n\r\n";
    QTest::newRow("chunks") << put + "Transfer-Encoding: chunked\r\n\r\n" + chunks << 200;
    QTest::newRow("chunks in capitals") << put + "transfer-encoding: Chunked\r\n\r\n" + chunks << 200;
    QTest::newRow("identity before chunks")
        << put + "Transfer-Encoding: identity, chunked\r\n\r\n" + chunks << 400;
    QTest::newRow("gzip before chunks") << put + "Transfer-Encoding: gzip, chunked\r\n\r\n" + chunks << 400;
    QTest::newRow("chunks before gzip") << put + "Transfer-Encoding: chunked, gzip\r\n\r\n" + chunks << 400;
    QTest::newRow("an unknown coding") << put + "Transfer-Encoding: sesame\r\n\r\n" + chunks << 400;
    QTest::newRow("identity alone") << put + "Transfer-Encoding: identity\r\nContent-Length: 1\r\n\r\nx"
                                    << 400;
    QTest::newRow("two codings apart")
        << put + "Transfer-Encoding: identity\r\nTransfer-Encoding: chunked\r\n\r\n" + chunks << 400;
    QTest::newRow("an empty coding") << put + "Transfer-Encoding:\r\n\r\n" + chunks << 400;
    QTest::newRow("chunks in HTTP/1.0")
        << "PUT / HTTP/1.0\r\nHost: h\r\nTransfer-Encoding: chunked\r\n\r\n" + chunks << 400;
    QTest::newRow("no host") << QByteArray("GET / HTTP/1.1\r\n\r\n") << 400;
    QTest::newRow("no host in HTTP/1.0") << QByteArray("GET / HTTP/1.0\r\n\r\n") << 200;
    QTest::newRow("two hosts") << QByteArray("GET / HTTP/1.1\r\nHost: h\r\nHost: i\r\n\r\n") << 400;
    const auto get = [](const QByteArray& target) {
        return "GET " + target + " HTTP/1.1\r\nHost: h\r\n\r\n";
    };
    QTest::newRow("an encoded address") << get("/%E7%89%88?query=%e6%9c%ac+1") << 200;
    QTest::newRow("half an escape") << get("/v%4") << 400;
    QTest::newRow("an escape of other letters") << get("/v%zz") << 400;
    QTest::newRow("bytes that are no text") << get("/v%ff") << 400;
    QTest::newRow("a zero") << get("/v%00") << 400;
    QTest::newRow("half an escape in the query") << get("/?query=%e") << 400;
    QTest::newRow("bytes that are no text in the query") << get("/?query=%e6%9c") << 400;
}

void FramingTest::refusesWhatCouldBeReadInTwoWays()
{
    QFETCH(QByteArray, request);
    QFETCH(int, status);
    Running running;
    RawClient client(running.port);

    client.Send(request);

    QCOMPARE(client.ReceiveStatus(), status);
    QCOMPARE(running.echo.handled.load(), status == 200 ? 1 : 0);
}

// Whoever sits in between may have taken what follows for the refused request's body.
void FramingTest::takesNothingAfterARefusedRequestForAnother()
{
    Running running;
    RawClient client(running.port);

    client.Send("PUT / HTTP/1.1\r\nHost: h\r\nTransfer-Encoding: gzip\r\n\r\n" + get);
    const QByteArray answer = client.Receive();

    QCOMPARE(RawClient::StatusOf(answer), 400);
    QVERIFY(answer.contains("Connection: close"));
    QVERIFY(client.WaitUntilClosed());
    QCOMPARE(running.echo.handled.load(), 0);
}

void FramingTest::answersToHeadWithoutABody()
{
    Running running;
    RawClient client(running.port);

    client.Send("HEAD / HTTP/1.1\r\nHost: h\r\n\r\n" + get);
    QByteArray answers;
    while (answers.count("HTTP/1.1 200") < 2 && client.socket.waitForReadyRead(RawClient::waitMs))
        answers += client.socket.readAll();

    QVERIFY2(answers.contains("Content-Length: 1\r\n\r\nHTTP/1.1 200"), answers.constData());
}

void FramingTest::asksOnlyForItselfByItsNames_data()
{
    QTest::addColumn<QByteArray>("host");
    QTest::addColumn<int>("status");
    QTest::newRow("its address") << QByteArray("127.0.0.1") << 200;
    QTest::newRow("its address and port") << QByteArray("127.0.0.1:1234") << 200;
    QTest::newRow("its name") << QByteArray("localhost") << 200;
    QTest::newRow("its name in capitals") << QByteArray("LocalHost:80") << 200;
    QTest::newRow("its IPv6 address") << QByteArray("[::1]:80") << 200;
    QTest::newRow("a web site that points here") << QByteArray("rebound.example:80") << 421;
    QTest::newRow("a web site that begins alike") << QByteArray("127.0.0.1.example") << 421;
    QTest::newRow("a web site that ends alike") << QByteArray("x.localhost") << 421;
    QTest::newRow("nothing") << QByteArray("") << 421;
}

void FramingTest::asksOnlyForItselfByItsNames()
{
    QFETCH(QByteArray, host);
    QFETCH(int, status);
    HttpLimits limits = SmallLimits();
    limits.loopbackHostsOnly = true;
    Running running(limits);
    RawClient client(running.port);

    client.Send("GET / HTTP/1.1\r\nHost: " + host + "\r\n\r\n");

    QCOMPARE(client.ReceiveStatus(), status);
}

QTEST_GUILESS_MAIN(FramingTest)
#include "tst_framing.moc"
