// SPDX-License-Identifier: Apache-2.0

#include "ApiClient.h"
#include "ServerProcess.h"

#include <QCryptographicHash>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTest>
#include <QVariant>

#include <atomic>
#include <cmath>
#include <random>
#include <thread>

namespace
{
constexpr int writers = 4;

// A save whose answer the author has not seen.
struct Attempt
{
    QByteArray key;
    QByteArray body;
    QByteArray name; // of a new version; empty: overwrites
};

// One author with one version that he overwrites, and now and then a new version. He repeats what was not
// answered, with the same key, as the client library does.
class Writer
{
public:
    Writer(ServerProcess& server, QByteArray theAppId, unsigned seed, int number)
        : client(server.Port(), server.Token(QStringLiteral("author-1"))), appId(std::move(theAppId)),
          random(seed), prefix('w' + QByteArray::number(number) + '-')
    {
    }

    bool Begin()
    {
        lastBody = BodyOf(10000);
        const auto reply = client.Create(appId, prefix + "main", lastBody);
        versionId = reply.json.value(QLatin1String("id")).toString().toLatin1();
        return reply.status == 201;
    }

    void SaveUntil(const std::atomic<bool>& ended)
    {
        while (!ended && fault.isEmpty()) {
            if (!pending)
                pending = NextAttempt();
            if (!Try())
                return;
        }
    }

    // After a restart: what was acknowledged must be there, and the open save is repeated.
    void Verify()
    {
        client.Disconnect();
        const auto reply = client.Ask("GET", "/api/v1/versions/" + versionId + "/data");
        const bool acknowledged = reply.body == lastBody;
        const bool openOne = pending && pending->name.isEmpty() && reply.body == pending->body;
        if (reply.status != 200 || !(acknowledged || openOne))
            return Fail("the head holds neither the acknowledged nor the open save", reply);
        if (pending)
            Try();
    }

    // Any thread.
    void LoseServer() { client.EndConnection(); }

    QByteArray Fault() const { return fault; }
    QByteArray VersionId() const { return versionId; }
    qint64 Revision() const { return revision; }
    qint64 NewVersions() const { return newVersions; }
    qint64 Acknowledged() const { return acknowledgedSaves; }

private:
    Attempt NextAttempt()
    {
        // As many small saves as large ones, 10 kB to 5 MB.
        const double exponent = std::uniform_real_distribution<double>(std::log(1e4), std::log(5e6))(random);
        Attempt attempt{ApiClient::NewKey(), BodyOf(static_cast<int>(std::exp(exponent))), {}};
        if (random() % 5 == 0)
            attempt.name = prefix + QByteArray::number(++names);
        return attempt;
    }

    QByteArray BodyOf(int bytes)
    {
        return ApiClient::Body("\"mark\":" + QByteArray::number(static_cast<quint32>(random())) +
                               ",\"fill\":\"" + QByteArray(bytes, static_cast<char>('a' + random() % 26)) +
                               '"');
    }

    // False when no answer came.
    bool Try()
    {
        const bool isNew = !pending->name.isEmpty();
        const auto reply = isNew ? client.Create(appId, pending->name, pending->body, pending->key)
                                 : client.Overwrite(versionId, revision, pending->body, pending->key);
        if (reply.status == 0 || reply.status == 503)
            return false;
        if (reply.status != (isNew ? 201 : 200)) {
            Fail("a save was refused", reply);
            return false;
        }
        const QString stored = reply.json.value(QLatin1String("sha256")).toString();
        if (stored.toLatin1() != QCryptographicHash::hash(pending->body, QCryptographicHash::Sha256).toHex())
            Fail("the acknowledged hash is another one", reply);
        ++acknowledgedSaves;
        if (isNew) {
            ++newVersions;
        } else {
            lastBody = pending->body;
            ++revision;
            if (reply.json.value(QLatin1String("revision")).toInt() != revision)
                Fail("the acknowledged revision is another one", reply);
        }
        pending.reset();
        return true;
    }

    void Fail(const char* what, const ApiClient::Reply& reply)
    {
        fault = prefix + ' ' + what + ": " + QByteArray::number(reply.status) + ' ' + reply.body.left(300);
    }

    ApiClient client;
    const QByteArray appId;
    std::mt19937 random;
    const QByteArray prefix;
    QByteArray versionId;
    QByteArray lastBody;
    qint64 revision = 1;
    qint64 newVersions = 0;
    qint64 acknowledgedSaves = 0;
    int names = 0;
    std::optional<Attempt> pending;
    QByteArray fault;
};
} // namespace

// The real server, killed at random moments of saves. RPA_CRASH_KILLS and RPA_CRASH_SEED make a longer run
// and repeat one that failed.
class CrashTest : public QObject
{
    Q_OBJECT

private slots:
    void losesNothingAcknowledgedWhenKilled();

private:
    static void Work(std::vector<Writer>& all, ServerProcess& server, std::mt19937& random);
    static void CheckHistory(const QString& file, const std::vector<Writer>& all);
};

void CrashTest::Work(std::vector<Writer>& all, ServerProcess& server, std::mt19937& random)
{
    std::atomic<bool> ended{false};
    std::atomic<int> atWork{writers};
    std::vector<std::thread> threads;
    for (Writer& writer : all) {
        threads.emplace_back([&] {
            writer.SaveUntil(ended);
            --atWork;
        });
    }
    // The moment is what is being drawn here, so this is a wait by intention.
    std::this_thread::sleep_for(
        std::chrono::microseconds(std::uniform_int_distribution<int>(1000, 250000)(random)));
    server.Kill();
    ended = true;
    // Wine keeps connections of a killed server open, also one that is just being made.
    while (atWork > 0) {
        for (Writer& writer : all)
            writer.LoseServer();
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    for (std::thread& thread : threads)
        thread.join();
}

// The database itself: every revision once, in a row without gaps, with the body that belongs to its hash.
void CrashTest::CheckHistory(const QString& file, const std::vector<Writer>& all)
{
    {
        QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("check"));
        database.setDatabaseName(file);
        QVERIFY(database.open());
        QSqlQuery query(database);
        query.setForwardOnly(true);
        QVERIFY(query.exec(QStringLiteral("PRAGMA integrity_check")));
        QVERIFY(query.next());
        QCOMPARE(query.value(0).toString(), QStringLiteral("ok"));

        QVERIFY(query.exec(QStringLiteral("SELECT body, sha256, size FROM revision")));
        while (query.next()) {
            const QByteArray body = query.value(0).toByteArray();
            QCOMPARE(qint64{body.size()}, query.value(2).toLongLong());
            QCOMPARE(QCryptographicHash::hash(body, QCryptographicHash::Sha256),
                     query.value(1).toByteArray());
        }

        qint64 newVersions = 0;
        for (const Writer& writer : all) {
            newVersions += writer.NewVersions();
            query.prepare(
                QStringLiteral("SELECT COUNT(*), MAX(revision) FROM revision WHERE version_id = ?"));
            query.addBindValue(QString::fromLatin1(writer.VersionId()));
            QVERIFY(query.exec() && query.next());
            QCOMPARE(query.value(0).toLongLong(), writer.Revision());
            QCOMPARE(query.value(1).toLongLong(), writer.Revision());
        }
        QVERIFY(query.exec(QStringLiteral("SELECT COUNT(*) FROM version")) && query.next());
        QCOMPARE(query.value(0).toLongLong(), newVersions + qint64{writers});
    }
    QSqlDatabase::removeDatabase(QStringLiteral("check"));
}

void CrashTest::losesNothingAcknowledgedWhenKilled()
{
    const int wanted = qEnvironmentVariableIntValue("RPA_CRASH_KILLS");
    const int kills = wanted > 0 ? wanted : 50;
    const unsigned seed = qEnvironmentVariableIsSet("RPA_CRASH_SEED")
                              ? qEnvironmentVariableIntValue("RPA_CRASH_SEED")
                              : std::random_device()();
    qInfo("seed %u, %d kills", seed, kills);
    std::mt19937 random(seed);
    ServerProcess server;
    QVERIFY2(server.Start(), server.ErrorText());
    const auto app = ApiClient(server.Port(), server.Token(QStringLiteral("author-1"))).CreateApp("crash");
    QCOMPARE(app.status, 201);
    std::vector<Writer> all;
    for (int i = 0; i < writers; ++i)
        all.emplace_back(server, app.json.value(QLatin1String("id")).toString().toLatin1(),
                         static_cast<unsigned>(random()), i);
    for (Writer& writer : all)
        QVERIFY(writer.Begin());

    for (int i = 0; i < kills; ++i) {
        Work(all, server, random);
        QVERIFY2(server.Restart(), server.ErrorText());
        for (Writer& writer : all) {
            writer.Verify();
            QVERIFY2(writer.Fault().isEmpty(), writer.Fault().constData());
        }
    }

    QVERIFY(server.Stop());
    CheckHistory(server.DataDir() + QStringLiteral("/versions.db"), all);
    qint64 acknowledged = 0;
    for (const Writer& writer : all)
        acknowledged += writer.Acknowledged();
    qInfo("%lld acknowledged saves", static_cast<long long>(acknowledged));
    QVERIFY(acknowledged > kills);
}

QTEST_GUILESS_MAIN(CrashTest)
#include "tst_crash.moc"
