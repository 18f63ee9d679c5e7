// SPDX-License-Identifier: Apache-2.0

#include "ProgramFixture.h"

#include <QJsonArray>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QTest>
#include <QUrl>

#include <atomic>
#include <csignal>
#include <thread>
#include <vector>

// A store that stops answering: a database whose machine hangs, a file or table that somebody keeps locked.
class StallTest : public ProgramFixture
{
    Q_OBJECT

private slots:
    void cleanup();
    void saysThatTheStoreDoesNotAnswer_data() { Databases(); }
    void saysThatTheStoreDoesNotAnswer();
    void refusesListsAndSavesInTime_data() { Databases(); }
    void refusesListsAndSavesInTime();
    void knowsOtherTokensWhileItAsksForOne_data() { Postgres(); }
    void knowsOtherTokensWhileItAsksForOne();
    void endsWhenItIsToldTo_data() { Databases(); }
    void endsWhenItIsToldTo();
    void waitsOnlySoLongForALockedTable_data() { Postgres(); }
    void waitsOnlySoLongForALockedTable();

private:
    static constexpr int callMs = 12000; // the longest that a call to the database may last, and some time

    static void Postgres();
    bool OpenSideways();
    void Stall();
    void Recover();
    bool IsPostgres() const { return store.startsWith(QLatin1String("postgresql:")); }

    QSqlDatabase sideways;
};

void StallTest::Postgres()
{
    QTest::addColumn<QString>("database");
    QTest::newRow("postgresql") << QStringLiteral("postgresql");
}

// A connection of somebody else.
bool StallTest::OpenSideways()
{
    const QUrl url(store);
    sideways = QSqlDatabase::addDatabase(IsPostgres() ? QStringLiteral("QPSQL") : QStringLiteral("QSQLITE"),
                                         QStringLiteral("sideways"));
    sideways.setHostName(url.host());
    sideways.setPort(url.port());
    sideways.setUserName(url.userName());
    sideways.setPassword(url.password());
    sideways.setDatabaseName(IsPostgres() ? url.path().mid(1) : store.mid(7));
    return sideways.open();
}

void StallTest::Stall()
{
    if (IsPostgres())
        return postgres->Pause();
    QVERIFY(OpenSideways());
    QSqlQuery lock(sideways);
    QVERIFY2(lock.exec(QStringLiteral("BEGIN EXCLUSIVE")), qPrintable(lock.lastError().text()));
}

void StallTest::Recover()
{
    if (IsPostgres() && postgres)
        postgres->Resume();
    sideways.close();
    sideways = {};
    QSqlDatabase::removeDatabase(QStringLiteral("sideways"));
}

void StallTest::cleanup()
{
    Recover();
    EndServer();
}

void StallTest::saysThatTheStoreDoesNotAnswer()
{
    QVERIFY(Start());
    QVERIFY(SignIn());
    const QByteArray token = ApiClient::TokenOf(server->Port(), pin, password);
    QCOMPARE(client->Get("/api/v1/health").status, 200);

    Stall();
    std::vector<std::thread> others;
    for (int i = 0; i < 12; ++i)
        others.emplace_back([&] { ApiClient(server->Port(), token).Get("/api/v1/online-apps"); });
    qint64 slowest = 0;
    QElapsedTimer sinceStall;
    sinceStall.start();
    ApiClient::Reply health;
    do {
        QElapsedTimer elapsed;
        elapsed.start();
        health = client->Get("/api/v1/health");
        slowest = std::max(slowest, elapsed.elapsed());
    } while (health.status == 200 && sinceStall.elapsed() < 30000);
    const qint64 noticedMs = sinceStall.elapsed();
    for (std::thread& other : others)
        other.join();
    qInfo("slowest health answer %lld ms, stall noticed after %lld ms", slowest, noticedMs);

    QCOMPARE(health.status, 503);
    QCOMPARE(health.json.value(QLatin1String("status")).toString(), QStringLiteral("store"));
    QVERIFY(!health.json.value(QLatin1String("message")).toString().isEmpty());
    QVERIFY2(slowest < 2000, QByteArray::number(slowest));
    QVERIFY2(noticedMs < 10000, QByteArray::number(noticedMs));
    Recover();
    QTRY_COMPARE_WITH_TIMEOUT(client->Get("/api/v1/health").status, 200, 20000);
    QVERIFY(!NewApp("after the stall").isEmpty());
}

void StallTest::refusesListsAndSavesInTime()
{
    QVERIFY(Start());
    QVERIFY(SignIn());
    const QByteArray app = NewApp("one");
    const QByteArray version = NewVersion(app, "one", ApiClient::Body(1));
    const QByteArray token = ApiClient::TokenOf(server->Port(), pin, password);
    const QByteArray key = ApiClient::NewKey();

    Stall();
    std::atomic<int> unexpected{0};
    std::atomic<qint64> slowest{0};
    std::vector<std::thread> others;
    for (int i = 0; i < 20; ++i)
        others.emplace_back([&, i] {
            ApiClient mine(server->Port(), token);
            QElapsedTimer elapsed;
            elapsed.start();
            const auto reply =
                i % 2 ? mine.Get("/api/v1/online-apps") : mine.Overwrite(version, 1, ApiClient::Body(2), key);
            unexpected += reply.status != 503;
            qint64 longest = slowest;
            while (longest < elapsed.elapsed() && !slowest.compare_exchange_weak(longest, elapsed.elapsed()))
                continue;
        });
    for (std::thread& other : others)
        other.join();
    qInfo("slowest refusal after %lld ms", slowest.load());

    QCOMPARE(unexpected.load(), 0);
    QVERIFY2(slowest < 2 * callMs, QByteArray::number(slowest));
    Recover();
    ApiClient repeating(server->Port(), token);
    QTRY_COMPARE_WITH_TIMEOUT(repeating.Overwrite(version, 1, ApiClient::Body(2), key).status, 200, 20000);
    QCOMPARE(client->Get("/api/v1/versions/" + version + "/data").body, ApiClient::Body(2));
}

void StallTest::knowsOtherTokensWhileItAsksForOne()
{
    QVERIFY(Start());
    QVERIFY(SignIn());
    const QByteArray app = NewApp("one");
    const QByteArray version = NewVersion(app, "one", ApiClient::Body(1));
    const QByteArray path = "/api/v1/versions/" + version + "/data";
    QVERIFY(OpenSideways());
    QSqlQuery lock(sideways);
    QCOMPARE(client->Get("/api/v1/sessions/current").status, 200);

    // Whoever comes with a token that is not known yet waits for the store; whoever is known does not.
    QVERIFY(lock.exec(QStringLiteral("BEGIN")));
    QVERIFY(lock.exec(QStringLiteral("LOCK TABLE session IN ACCESS EXCLUSIVE MODE")));
    std::thread stranger([&] { ApiClient(server->Port(), QByteArray(64, 'a')).Get("/api/v1/apps"); });
    QTRY_VERIFY([&] {
        QSqlQuery waiting(QStringLiteral("SELECT count(*) FROM pg_locks WHERE NOT granted"), sideways);
        return waiting.next() && waiting.value(0).toInt() > 0;
    }());
    QElapsedTimer elapsed;
    elapsed.start();
    const auto known = client->Get("/api/v1/sessions/current");
    const qint64 knownMs = elapsed.elapsed();
    lock.exec(QStringLiteral("ROLLBACK"));
    stranger.join();

    QCOMPARE(known.status, 200);
    QVERIFY2(knownMs < 2000, QByteArray::number(knownMs));
}

void StallTest::endsWhenItIsToldTo()
{
    QVERIFY(Start());
    QVERIFY(SignIn());
    const QByteArray version = NewVersion(NewApp("one"), "one", ApiClient::Body(1));
    const QByteArray token = ApiClient::TokenOf(server->Port(), pin, password);

    Stall();
    std::atomic<int> asked{0};
    std::vector<std::thread> others;
    for (int i = 0; i < 16; ++i)
        others.emplace_back([&, i] {
            ApiClient mine(server->Port(), token);
            ++asked;
            i % 2 ? mine.Get("/api/v1/online-apps") : mine.Overwrite(version, 1, ApiClient::Body(2));
        });
    QTRY_COMPARE(asked.load(), 16);
    QElapsedTimer elapsed;
    elapsed.start();
    ::kill(static_cast<pid_t>(server->process.processId()), SIGTERM);
    const bool ended = server->process.waitForFinished(60000);
    const qint64 endedMs = elapsed.elapsed();
    if (!ended)
        server->process.kill();
    for (std::thread& other : others)
        other.join();
    qInfo("ended after %lld ms", endedMs);

    QVERIFY(ended);
    QCOMPARE(server->ExitCode(), 0);
    QVERIFY2(endedMs < 2 * callMs, QByteArray::number(endedMs));
}

void StallTest::waitsOnlySoLongForALockedTable()
{
    QVERIFY(Start());
    QVERIFY(SignIn());
    const QByteArray app = NewApp("one");
    const QByteArray version = NewVersion(app, "one", ApiClient::Body(1));
    QVERIFY(OpenSideways());
    QSqlQuery lock(sideways);
    QVERIFY(lock.exec(QStringLiteral("BEGIN")));
    QVERIFY(lock.exec(QStringLiteral("LOCK TABLE version IN ACCESS EXCLUSIVE MODE")));

    QElapsedTimer elapsed;
    elapsed.start();
    const auto list = client->Get("/api/v1/apps/" + app + "/versions");
    const qint64 listMs = elapsed.restart();
    const auto saved = client->Overwrite(version, 1, ApiClient::Body(2));
    const qint64 savedMs = elapsed.elapsed();
    qInfo("list refused after %lld ms, save after %lld ms", listMs, savedMs);

    QCOMPARE(list.status, 503);
    QCOMPARE(saved.status, 503);
    QVERIFY2(listMs < callMs && savedMs < callMs, QByteArray::number(listMs));
    QCOMPARE(client->Get("/api/v1/health").status, 200);
    QVERIFY(lock.exec(QStringLiteral("ROLLBACK")));
    QCOMPARE(client->Overwrite(version, 1, ApiClient::Body(3)).status, 200);
}

QTEST_GUILESS_MAIN(StallTest)
#include "tst_stall.moc"
