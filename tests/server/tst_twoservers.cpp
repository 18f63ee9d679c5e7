// SPDX-License-Identifier: Apache-2.0

#include "ProgramFixture.h"

#include <QJsonArray>
#include <QTest>

#include <atomic>
#include <random>
#include <thread>
#include <vector>

// Two servers on one PostgreSQL.
class TwoServersTest : public ProgramFixture
{
    Q_OBJECT

private slots:
    void cleanup();
    void countOnTheSameVersionsWithoutDeadlock_data() { Postgres(); }
    void countOnTheSameVersionsWithoutDeadlock();
    void replayAKeyThatTheOtherHasSeen_data() { Postgres(); }
    void replayAKeyThatTheOtherHasSeen();

private:
    static void Postgres();
    bool StartBoth();
    void Count(quint16 port, const std::vector<QByteArray>& versions, int increments, unsigned seed);

    std::unique_ptr<PlainServer> other;
    QByteArray token;
    std::atomic<int> saved{0};
    std::atomic<int> unexpected{0};
};

void TwoServersTest::Postgres()
{
    QTest::addColumn<QString>("database");
    QTest::newRow("postgresql") << QStringLiteral("postgresql");
}

bool TwoServersTest::StartBoth()
{
    other = std::make_unique<PlainServer>(PlainServer::ServingArguments(store));
    const bool started = Start() && other->WaitUntilReady() && SignIn();
    token = started ? ApiClient::TokenOf(other->Port(), pin, password) : QByteArray();
    return !token.isEmpty();
}

void TwoServersTest::cleanup()
{
    other.reset();
    EndServer();
}

// One client: saves any of the versions until it has done its share.
void TwoServersTest::Count(quint16 port, const std::vector<QByteArray>& versions, int increments,
                           unsigned seed)
{
    ApiClient mine(port, token);
    std::mt19937 random(seed);
    for (int done = 0; done < increments && unexpected == 0;) {
        const QByteArray& version = versions.at(random() % versions.size());
        const QByteArray head = mine.Get("/api/v1/versions/" + version + "/data").head;
        const int at = head.indexOf("ETag: \"") + 7;
        const qint64 revision = head.mid(at, head.indexOf('"', at) - at).toLongLong();
        const auto reply = mine.Overwrite(version, revision, ApiClient::Body(done));
        if (reply.status == 200) {
            ++saved;
            ++done;
        } else if (reply.status != 412) {
            ++unexpected;
        }
    }
}

void TwoServersTest::countOnTheSameVersionsWithoutDeadlock()
{
    constexpr int clientsOfEach = 8;
    constexpr int increments = 20;
    saved = unexpected = 0;
    QVERIFY(StartBoth());
    std::vector<QByteArray> versions;
    for (int app = 0; app < 3; ++app) {
        const QByteArray id = NewApp("app-" + QByteArray::number(app));
        for (int version = 0; version < 4; ++version)
            versions.push_back(NewVersion(id, "v" + QByteArray::number(version), ApiClient::Body(0)));
    }

    QElapsedTimer elapsed;
    elapsed.start();
    std::vector<std::thread> clients;
    for (unsigned i = 0; i < 2 * clientsOfEach; ++i)
        clients.emplace_back(
            [&, i] { Count(i % 2 ? other->Port() : server->Port(), versions, increments, i); });
    for (std::thread& one : clients)
        one.join();
    qInfo("%d increments in %lld ms, %d not as expected", saved.load(), elapsed.elapsed(), unexpected.load());

    QVERIFY2(unexpected == 0, (server->Log() + other->Log()).right(1000));
    QCOMPARE(saved.load(), 2 * clientsOfEach * increments);
    qint64 revisions = 0;
    for (const QByteArray& version : versions) {
        const QByteArray head = client->Get("/api/v1/versions/" + version + "/data").head;
        const int at = head.indexOf("ETag: \"") + 7;
        revisions += head.mid(at, head.indexOf('"', at) - at).toLongLong() - 1;
    }
    QCOMPARE(revisions, qint64{saved});
}

void TwoServersTest::replayAKeyThatTheOtherHasSeen()
{
    QVERIFY(StartBoth());
    const QByteArray app = NewApp("one");
    for (int round = 0; round < 30; ++round) {
        const QByteArray key = ApiClient::NewKey();
        const QByteArray name = "v" + QByteArray::number(round);
        ApiClient::Reply replies[2];
        std::thread first([&] {
            replies[0] = ApiClient(server->Port(), token).Create(app, name, ApiClient::Body(round), key);
        });
        std::thread second([&] {
            replies[1] = ApiClient(other->Port(), token).Create(app, name, ApiClient::Body(round), key);
        });
        first.join();
        second.join();

        QCOMPARE(replies[0].status, 201);
        QCOMPARE(replies[1].status, 201);
        QCOMPARE(replies[1].body, replies[0].body);
    }
    const auto list = client->Get("/api/v1/apps/" + app + "/versions");
    QCOMPARE(list.json.value(QLatin1String("versions")).toArray().size(), 30);
}

QTEST_GUILESS_MAIN(TwoServersTest)
#include "tst_twoservers.moc"
