// SPDX-License-Identifier: Apache-2.0

#include "ApiClient.h"
#include "PlainServer.h"
#include "RawClient.h"
#include "ServerProcess.h"
#include "TestFolder.h"

#include <QTest>

#include <memory>
#include <vector>

namespace
{
constexpr int megabyte = 1024 * 1024;

using Clients = std::vector<std::unique_ptr<RawClient>>;

// The value of a figure of /metrics; -1 when there is none.
double Figure(quint16 port, const QByteArray& name)
{
    const QByteArray text = ApiClient(port, {}).Ask("GET", "/metrics").body;
    const int at = text.indexOf('\n' + name + ' ');
    return at < 0 ? -1
                  : text.mid(at + name.size() + 2, text.indexOf('\n', at + 1)).split('\n').first().toDouble();
}

QByteArray AppDataOf(int bytes)
{
    QByteArray text = "\"parts\":[\"\"";
    while (text.size() < bytes)
        text += ",\"" + QByteArray(qMin(megabyte, bytes - text.size()), 'x') + '"';
    return ApiClient::Body(text + ']');
}
} // namespace

// What others try against a real server, and what its authors notice of it: nothing.
class FloodTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void savesAndSignsInWhileStrangersSendEndlessBodies();
    void refusesAStrangersBodyByTheLimitOfItsRoute();
    void asksWhoIsThereBeforeTheBody_data();
    void asksWhoIsThereBeforeTheBody();
    void savesForOthersWhileOneAccountFloods();
    void savesForOthersWhileManyReadSlowly();
    void letsTheOwnerSignInWhileAnotherAddressGuesses();
    void letsTheOwnerSignInWhileAllTheWorldFillsTheQueue();

private:
    ApiClient Client(const char* pin) { return {server->Port(), Token(pin)}; }
    QByteArray Token(const char* pin) const { return server->Token(QString::fromLatin1(pin)); }
    QByteArray NewApp(const char* pin);
    int SaveAs(const char* pin);
    int TrySigningIn();
    Clients Open(int count, const QByteArray& request);

    std::unique_ptr<ServerProcess> server;
};

void FloodTest::init()
{
    server = std::make_unique<ServerProcess>();
    QVERIFY2(server->Start(), server->ErrorText());
}

QByteArray FloodTest::NewApp(const char* pin)
{
    return Client(pin).CreateApp(ApiClient::NewKey()).json.value(QLatin1String("id")).toString().toLatin1();
}

int FloodTest::SaveAs(const char* pin)
{
    return Client(pin).Create(NewApp(pin), "v", AppDataOf(200000)).status;
}

int FloodTest::TrySigningIn()
{
    return Client("author-1")
        .Ask("POST", "/api/v1/sessions", R"({"account":"author-1","password":"wrong"})")
        .status;
}

Clients FloodTest::Open(int count, const QByteArray& request)
{
    Clients clients;
    for (int i = 0; i < count; ++i) {
        clients.push_back(std::make_unique<RawClient>(server->Port()));
        clients.back()->Send(request);
    }
    return clients;
}

void FloodTest::savesAndSignsInWhileStrangersSendEndlessBodies()
{
    const Clients strangers = Open(
        16,
        "POST /api/v1/sessions HTTP/1.1\r\nHost: localhost\r\nTransfer-Encoding: chunked\r\n\r\n1\r\n{\r\n");
    QTRY_VERIFY(Figure(server->Port(), "rpa_connections") >= 17);

    const int signedIn = TrySigningIn();
    const int saved = SaveAs("author-1");

    QCOMPARE(signedIn, 401);
    QCOMPARE(saved, 201);
}

void FloodTest::refusesAStrangersBodyByTheLimitOfItsRoute()
{
    RawClient stranger(server->Port());

    stranger.Send(
        "POST /api/v1/sessions HTTP/1.1\r\nHost: localhost\r\nTransfer-Encoding: chunked\r\n\r\n1001\r\n");

    QCOMPARE(stranger.ReceiveStatus(), 413);
}

void FloodTest::asksWhoIsThereBeforeTheBody_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QByteArray>("pin");
    QTest::addColumn<int>("status");
    QTest::newRow("nobody") << QByteArray("POST /api/v1/apps") << QByteArray() << 401;
    QTest::newRow("a dead token") << QByteArray("POST /api/v1/apps") << QByteArray("nobody") << 401;
    QTest::newRow("no administrator")
        << QByteArray("POST /api/v1/versions/v/restore") << QByteArray("author-1") << 403;
}

void FloodTest::asksWhoIsThereBeforeTheBody()
{
    QFETCH(QByteArray, line);
    QFETCH(QByteArray, pin);
    QFETCH(int, status);
    RawClient client(server->Port());

    client.Send(line + " HTTP/1.1\r\nHost: localhost\r\nContent-Length: 1000\r\n" +
                (pin.isEmpty() ? QByteArray() : "Authorization: Bearer " + Token(pin.constData()) + "\r\n") +
                "\r\n");

    QCOMPARE(client.ReceiveStatus(5000), status);
}

void FloodTest::savesForOthersWhileOneAccountFloods()
{
    const QByteArray appId = NewApp("author-1");
    const Clients flood =
        Open(20, "POST /api/v1/apps/" + appId + "/versions HTTP/1.1\r\nHost: localhost\r\n" +
                     "Authorization: Bearer " + Token("author-1") +
                     "\r\nContent-Length: " + QByteArray::number(64 * megabyte) + "\r\n\r\n{");
    QTRY_VERIFY(Figure(server->Port(), "rpa_connections") >= 21 ||
                Figure(server->Port(), "rpa_body_bytes") >= 256 * megabyte);

    QCOMPARE(SaveAs("author-2"), 201);
    QCOMPARE(TrySigningIn(), 401);
}

void FloodTest::savesForOthersWhileManyReadSlowly()
{
    const QByteArray appId = NewApp("author-1");
    const auto saved = Client("author-1").Create(appId, "v", AppDataOf(60 * megabyte));
    QCOMPARE(saved.status, 201);
    const QByteArray request =
        "GET /api/v1/versions/" + saved.json.value(QLatin1String("id")).toString().toLatin1() +
        "/data HTTP/1.1\r\nHost: localhost\r\nAuthorization: Bearer " + Token("author-1") + "\r\n\r\n";

    Clients readers = Open(10, request);
    int refused = 0;
    for (const auto& reader : readers) {
        reader->socket.setReadBufferSize(4096);
        QVERIFY(reader->socket.bytesAvailable() > 0 || reader->socket.waitForReadyRead(RawClient::waitMs));
        refused += RawClient::StatusOf(reader->socket.peek(20)) == 503 ? 1 : 0;
    }

    // 256 MB of answers for one account: four of them.
    QCOMPARE(refused, 6);
    QCOMPARE(SaveAs("author-2"), 201);
}

void FloodTest::letsTheOwnerSignInWhileAnotherAddressGuesses()
{
    TestFolder folder;
    QVERIFY(PlainServer::AddAuthor(folder.path(), QStringLiteral("owner"), "the right one"));
    PlainServer plain(
        {QStringLiteral("--data"), folder.path(), QStringLiteral("--listen"), QStringLiteral("127.0.0.1:0")});
    QVERIFY(plain.WaitUntilReady());
    const auto trySigningIn = [&plain](const QString& from, const QByteArray& password) {
        RawClient client(plain.Port(), from);
        const QByteArray body = R"({"account":"owner","password":")" + password + "\"}";
        client.Send("POST /api/v1/sessions HTTP/1.1\r\nHost: localhost\r\nContent-Length: " +
                    QByteArray::number(body.size()) + "\r\n\r\n" + body);
        return client.ReceiveStatus();
    };

    for (int i = 0; i < 5; ++i)
        QCOMPARE(trySigningIn(QStringLiteral("127.0.0.2"), "a guess"), 401);
    QCOMPARE(trySigningIn(QStringLiteral("127.0.0.2"), "a guess"), 429);

    QCOMPARE(trySigningIn(QStringLiteral("127.0.0.3"), "the right one"), 201);
}

void FloodTest::letsTheOwnerSignInWhileAllTheWorldFillsTheQueue()
{
    TestFolder folder;
    QVERIFY(PlainServer::AddAuthor(folder.path(), QStringLiteral("owner"), "the right one"));
    PlainServer plain(
        {QStringLiteral("--data"), folder.path(), QStringLiteral("--listen"), QStringLiteral("127.0.0.1:0")});
    QVERIFY(plain.WaitUntilReady());
    const auto ask = [&plain](const QString& from, const QByteArray& account, const QByteArray& password) {
        auto client = std::make_unique<RawClient>(plain.Port(), from);
        const QByteArray body = R"({"account":")" + account + R"(","password":")" + password + "\"}";
        client->Send("POST /api/v1/sessions HTTP/1.1\r\nHost: localhost\r\nContent-Length: " +
                     QByteArray::number(body.size()) + "\r\n\r\n" + body);
        return client;
    };
    const QString home = QStringLiteral("127.0.0.3");
    QCOMPARE(ask(home, "owner", "the right one")->ReceiveStatus(), 201);

    // When: guesses from as many addresses wait as may. One of them may be answered just then and leave its
    // place.
    bool wasFull = false;
    for (int round = 10; !wasFull && round < 30; ++round) {
        Clients strangers;
        for (int i = 0; i < 150; ++i)
            strangers.push_back(ask(QStringLiteral("127.%1.%2.1").arg(round).arg(i),
                                    "name" + QByteArray::number(i), "a guess"));
        QCOMPARE(strangers.back()->ReceiveStatus(), 503);
        const auto before = ask(QStringLiteral("127.%1.0.2").arg(round), "owner", "a guess");
        const auto owner = ask(home, "owner", "the right one");
        const auto after = ask(QStringLiteral("127.%1.0.3").arg(round), "owner", "a guess");

        QCOMPARE(owner->ReceiveStatus(), 201);
        wasFull = before->ReceiveStatus() == 503 && after->ReceiveStatus() == 503;
    }
    QVERIFY(wasFull);
}

QTEST_GUILESS_MAIN(FloodTest)
#include "tst_flood.moc"
