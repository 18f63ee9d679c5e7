// SPDX-License-Identifier: Apache-2.0

#include "FaultServer.h"
#include "VersionReplies.h"

#include <QTcpSocket>
#include <QtTest>

using Fault = FaultServer::Fault;

// Reads what the server puts on the wire, without any HTTP library that might tidy it up.
class FaultServerTest : public QObject
{
    Q_OBJECT

private slots:
    void answersWhatWasEnqueuedBeforeAskingTheScript();
    void keepsTheConnectionForTheNextRequest();
    void remembersRequestsWithHeadersAndBody();
    void answersLateWhenTold();
    void holdsAnAnswerUntilTold();
    void neverAnswersWhenSilent();
    void putsTheFaultOnTheWire_data();
    void putsTheFaultOnTheWire();
    void closesAfterTheFault_data();
    void closesAfterTheFault();
    void goesAwayWhileRequestsAreOpen();

private:
    // Sends a request and collects bytes until text has arrived.
    static QByteArray AskUntil(QTcpSocket* socket, const FaultServer& server, const QByteArray& text);
};

QByteArray FaultServerTest::AskUntil(QTcpSocket* socket, const FaultServer& server, const QByteArray& text)
{
    if (socket->state() != QAbstractSocket::ConnectedState) {
        socket->connectToHost(QStringLiteral("127.0.0.1"), quint16(server.GetUrl().port()));
        if (!socket->waitForConnected())
            return "no connection";
    }
    socket->write("POST /path?a=b HTTP/1.1\r\nHost: x\r\nX-Mark:  y \r\nContent-Length: 3\r\n\r\nabc");
    QByteArray bytes;
    while (!bytes.contains(text) && socket->waitForReadyRead(5000))
        bytes += socket->readAll();
    return bytes;
}

void FaultServerTest::answersWhatWasEnqueuedBeforeAskingTheScript()
{
    FaultServer server;
    server.SetScript([](const auto&) { return FaultServer::Json(200, "from the script"); });
    server.Enqueue(FaultServer::Json(200, "from the queue"));
    QTcpSocket socket;

    const auto first = AskUntil(&socket, server, "from the queue");
    const auto second = AskUntil(&socket, server, "from the script");

    QVERIFY(first.contains("from the queue"));
    QVERIFY(second.contains("from the script"));
}

void FaultServerTest::keepsTheConnectionForTheNextRequest()
{
    FaultServer server;
    QTcpSocket socket;

    AskUntil(&socket, server, "not-found");
    AskUntil(&socket, server, "not-found");

    QCOMPARE(server.GetRequestCount(), 2);
    QCOMPARE(server.GetConnectionCount(), 1);
}

void FaultServerTest::remembersRequestsWithHeadersAndBody()
{
    FaultServer server;
    QTcpSocket socket;

    AskUntil(&socket, server, "not-found");

    const auto requests = server.GetRequests();
    QCOMPARE(requests.size(), 1);
    QCOMPARE(requests.first().method, QByteArray("POST"));
    QCOMPARE(requests.first().path, QByteArray("/path?a=b"));
    QCOMPARE(requests.first().headers.value("x-mark"), QByteArray("y"));
    QCOMPARE(requests.first().body, QByteArray("abc"));
}

void FaultServerTest::answersLateWhenTold()
{
    FaultServer server;
    auto reply = FaultServer::Json(200, "late");
    reply.delay = std::chrono::milliseconds(60);
    server.Enqueue(reply);
    QTcpSocket socket;
    QElapsedTimer time;
    time.start();

    const auto bytes = AskUntil(&socket, server, "late");

    QVERIFY(bytes.contains("late"));
    QVERIFY(time.elapsed() >= 55);
}

void FaultServerTest::holdsAnAnswerUntilTold()
{
    FaultServer server;
    auto reply = FaultServer::Json(200, "held");
    reply.isHeld = true;
    server.Enqueue(reply);
    server.Enqueue(FaultServer::Json(200, "next"));
    QTcpSocket first;
    first.connectToHost(QStringLiteral("127.0.0.1"), quint16(server.GetUrl().port()));
    first.write("GET / HTTP/1.1\r\n\r\n");
    QTRY_COMPARE(server.GetRequestCount(), 1);
    QTcpSocket second;
    QVERIFY(AskUntil(&second, server, "next").contains("next"));
    QCOMPARE(first.bytesAvailable(), 0);

    server.AnswerHeld();

    QByteArray received;
    QTRY_VERIFY((received += first.readAll()).endsWith("held"));
    server.AnswerHeld();
    QVERIFY2(!first.waitForReadyRead(50), "an answer is given once");
}

void FaultServerTest::neverAnswersWhenSilent()
{
    FaultServer server;
    server.Enqueue(FaultServer::Failing(Fault::Silence));
    QTcpSocket socket;
    socket.connectToHost(QStringLiteral("127.0.0.1"), quint16(server.GetUrl().port()));
    QVERIFY(socket.waitForConnected());

    socket.write("GET / HTTP/1.1\r\n\r\n");

    QVERIFY(!socket.waitForReadyRead(100));
    QCOMPARE(server.GetRequestCount(), 1);
    QCOMPARE(socket.state(), QAbstractSocket::ConnectedState);
}

void FaultServerTest::putsTheFaultOnTheWire_data()
{
    QTest::addColumn<Fault>("fault");
    QTest::addColumn<QByteArray>("text");

    QTest::newRow("no fault has an etag") << Fault::None << QByteArray("ETag: \"1\"");
    QTest::newRow("wrong etag") << Fault::WrongEtag << QByteArray("ETag: \"oops\"");
    QTest::newRow("redirect") << Fault::Redirect << QByteArray("Location: http://127.0.0.1:1/elsewhere");
    QTest::newRow("bomb") << Fault::CompressionBomb << QByteArray("Content-Encoding: deflate");
    QTest::newRow("transfer compression")
        << Fault::TransferCompression << QByteArray("Transfer-Encoding: deflate");
    QTest::newRow("header flood") << Fault::HeaderFlood << QByteArray("X-Flood: xxx");
    QTest::newRow("interim flood") << Fault::InterimFlood << QByteArray("100 Continue\r\n\r\nHTTP/1.1 100");
    QTest::newRow("drip reaches the end") << Fault::SlowDrip << QByteArray("8,9]}");
    QTest::newRow("invalid json") << Fault::InvalidJson << QByteArray("[{\"id\":");
    QTest::newRow("deep json") << Fault::DeepJson << QByteArray(10000, ']');
    QTest::newRow("duplicate key") << Fault::DuplicateKeyJson << QByteArray(R"("a":{"b":2})");
    QTest::newRow("huge length") << Fault::HugeContentLength
                                 << QByteArray("Content-Length: 1000000000000000");
    QTest::newRow("bad length") << Fault::BadContentLength << QByteArray("Content-Length: many");
    QTest::newRow("bad chunk header") << Fault::BadChunkHeader << QByteArray("\r\nZZ\r\n");
    QTest::newRow("duplicate") << Fault::Duplicate << QByteArray("8,9]}HTTP/1.1 200");
    QTest::newRow("not http") << Fault::NotHttp << QByteArray("SSH-2.0");
}

void FaultServerTest::putsTheFaultOnTheWire()
{
    QFETCH(const Fault, fault);
    QFETCH(const QByteArray, text);
    FaultServer server;
    server.Enqueue(FaultServer::Failing(fault));
    QTcpSocket socket;

    const auto bytes = AskUntil(&socket, server, text);

    QVERIFY2(bytes.contains(text), bytes.left(300).constData());
}

void FaultServerTest::closesAfterTheFault_data()
{
    QTest::addColumn<Fault>("fault");
    QTest::addColumn<QByteArray>("end");

    QTest::newRow("cut with length") << Fault::CutWithLength << QByteArray("\"list");
    QTest::newRow("cut without length") << Fault::CutWithoutLength << QByteArray("\"list");
    QTest::newRow("cut chunk") << Fault::CutChunk << QByteArray("\"list");
    QTest::newRow("close before answer") << Fault::CloseBeforeAnswer << QByteArray();
    QTest::newRow("close within header") << Fault::CloseWithinHeader << QByteArray("Content-Le");
    QTest::newRow("reset") << Fault::Reset << QByteArray();
}

void FaultServerTest::closesAfterTheFault()
{
    QFETCH(const Fault, fault);
    QFETCH(const QByteArray, end);
    FaultServer server;
    server.Enqueue(FaultServer::Failing(fault));
    QTcpSocket socket;

    const auto bytes = AskUntil(&socket, server, "what never comes");

    QVERIFY2(bytes.endsWith(end), bytes.right(50).constData());
    QCOMPARE(socket.state(), QAbstractSocket::UnconnectedState);
}

void FaultServerTest::goesAwayWhileRequestsAreOpen()
{
    QTcpSocket socket;
    {
        FaultServer server;
        server.Enqueue(FaultServer::Failing(Fault::SlowDrip));
        AskUntil(&socket, server, "200");
    }

    QVERIFY(socket.state() == QAbstractSocket::UnconnectedState || socket.waitForDisconnected());
}

QTEST_GUILESS_MAIN(FaultServerTest)
#include "tst_faultserver.moc"
