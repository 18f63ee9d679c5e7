#include "RawClient.h"
#include "base/Loopback.h"
#include "http/HttpServer.h"

#include <QElapsedTimer>
#include <QTest>

#include <atomic>
#include <mutex>
#include <thread>

using namespace server;
using namespace std::chrono_literals;

namespace
{
constexpr int largeAnswer = 32 * 1024 * 1024; // more than the system keeps for a reader that does not read

// Answers with the number of body bytes it got; "/held" is answered when the test says so.
class Echo : public IHttpHandler
{
public:
    void Admit(const RequestHead& head, std::function<void(Admission)> decide) override
    {
        if (head.path == "/refused")
            return decide({Response::Refuse(403, "forbidden", QStringLiteral("不行")), 0, {}});
        decide({std::nullopt, head.path == "/short" ? 10 : 1000000, QString::fromLatin1(head.query)});
    }

    void Handle(Request request, Reply reply) override
    {
        ++handled;
        if (request.path == "/large")
            return reply(LargeAnswer(request));
        if (request.path != "/held")
            return reply(Response::Json(200, QByteArray::number(request.body.size())));
        const std::lock_guard lock(mutex);
        held.push_back(std::move(reply));
    }

    void OnRefusedByLimit(int) override { ++refused; }
    void OnAcceptPaused(const std::string&) override {}

    bool AnswerHeld()
    {
        const std::lock_guard lock(mutex);
        if (held.empty())
            return false;
        held.back()(Response::Json(200, "released"));
        held.pop_back();
        return true;
    }

    std::atomic<int> handled{0};
    std::atomic<int> refused{0};

private:
    static Response LargeAnswer(const Request& request)
    {
        Response response = Response::Json(200, QByteArray(largeAnswer, 'x'));
        response.account = QString::fromLatin1(request.query);
        return response;
    }

    std::mutex mutex;
    std::vector<Reply> held;
};

HttpLimits SmallLimits()
{
    HttpLimits limits;
    limits.bodyBytes = 100000;
    limits.bodyBytesInFlight = 150000;
    limits.connections = 5;
    limits.head = 1s;
    limits.idle = 2s;
    limits.body = 1s;
    limits.slowestBytesPerSecond = 1000000;
    return limits;
}

class Running
{
public:
    explicit Running(const HttpLimits& limits = SmallLimits())
        : server(limits), port(server.Listen("127.0.0.1", 0)), thread([this] { server.Run(echo, 2); })
    {
    }
    ~Running()
    {
        while (echo.AnswerHeld()) {
        }
        server.Stop(0s);
        thread.join();
    }

    HttpServer server;
    Echo echo;
    quint16 port;
    std::thread thread;
};

const QByteArray get = "GET / HTTP/1.1\r\nHost: h\r\n\r\n";
} // namespace

class HttpTest : public QObject
{
    Q_OBJECT

private slots:
    void refusesWhatCouldBeReadInTwoWays_data();
    void refusesWhatCouldBeReadInTwoWays();
    void takesNothingAfterARefusedRequestForAnother();
    void answersToHeadWithoutABody();
    void asksOnlyForItselfByItsNames_data();
    void asksOnlyForItselfByItsNames();
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

void HttpTest::refusesWhatCouldBeReadInTwoWays_data()
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

void HttpTest::refusesWhatCouldBeReadInTwoWays()
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
void HttpTest::takesNothingAfterARefusedRequestForAnother()
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

void HttpTest::answersToHeadWithoutABody()
{
    Running running;
    RawClient client(running.port);

    client.Send("HEAD / HTTP/1.1\r\nHost: h\r\n\r\n" + get);
    QByteArray answers;
    while (answers.count("HTTP/1.1 200") < 2 && client.socket.waitForReadyRead(RawClient::waitMs))
        answers += client.socket.readAll();

    QVERIFY2(answers.contains("Content-Length: 1\r\n\r\nHTTP/1.1 200"), answers.constData());
}

void HttpTest::asksOnlyForItselfByItsNames_data()
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

void HttpTest::asksOnlyForItselfByItsNames()
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
