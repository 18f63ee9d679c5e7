// SPDX-License-Identifier: Apache-2.0

#include "ApiClient.h"
#include "LockRemains.h"
#include "PlainServer.h"
#include "RawClient.h"
#include "ServerProcess.h"
#include "TestFolder.h"

#include <QFile>
#include <QTest>

class LifecycleTest : public QObject
{
    Q_OBJECT

private slots:
    void namesTheDatabasesItCanUse();
    void saysWhetherItCanEncrypt();
    void stopsWhenItsInputCloses();
    void comesBackOnTheSamePort();
    void warnsWhenOtherMachinesCanReachIt();
    void leavesAStoreToTheServerThatUsesIt();
    void startsThoughALockFileWasLeft_data();
    void startsThoughALockFileWasLeft();
    void endsWhenTheWorkstationSendsNothingOfUse();
    void embedsOnlyOnThisMachine();
    void showsItsFiguresToThisMachineOrForAToken_data();
    void showsItsFiguresToThisMachineOrForAToken();
    void showsItsFiguresToNobodyElseWithoutAToken();
    void refusesAMetricsTokenThatIsEasyToGuess();
    void takesItsLimitsFromTheCommandLine();
    void refusesACommandLineItDoesNotUnderstand_data();
    void refusesACommandLineItDoesNotUnderstand();
};

void LifecycleTest::namesTheDatabasesItCanUse()
{
    PlainServer asked({QStringLiteral("--version")});
    QCOMPARE(asked.ExitCode(), 0);
    // What it says when it is told to use one: it cannot be reached, or cannot be used at all.
    PlainServer other({QStringLiteral("--store"), QStringLiteral("postgresql://nobody@127.0.0.1:1/none")});
    QCOMPARE(other.ExitCode(), 1);

    const QByteArray said = asked.process.readAllStandardOutput();

    QVERIFY2(said.startsWith("rpa-version-server "), said.constData());
    QVERIFY2(said.contains("\ndatabases: SQLite 3."), said.constData());
    QCOMPARE(said.contains("PostgreSQL"), !other.Log().contains("built without PostgreSQL"));
}

void LifecycleTest::saysWhetherItCanEncrypt()
{
    PlainServer asked({QStringLiteral("--version")});
    QCOMPARE(asked.ExitCode(), 0);
    TestFolder folder;
    PlainServer told({QStringLiteral("--data"), folder.path(), QStringLiteral("--tls-certificate"),
                      QStringLiteral("/nowhere/cert.pem"), QStringLiteral("--tls-key"),
                      QStringLiteral("/nowhere/key.pem")});
    QCOMPARE(told.ExitCode(), 1);

    const QByteArray said = asked.process.readAllStandardOutput();

    QVERIFY2(said.contains("\nencryption: none") || said.contains("\nencryption: OpenSSL "),
             said.constData());
    QCOMPARE(said.contains("encryption: none"), told.Log().contains("built without TLS"));
}

void LifecycleTest::stopsWhenItsInputCloses()
{
    ServerProcess server;
    QVERIFY2(server.Start(), server.ErrorText());

    const bool graceful = server.Stop();

    QVERIFY2(graceful, server.Log().constData());
    QVERIFY(server.Log().contains("\"stopped\""));
}

void LifecycleTest::comesBackOnTheSamePort()
{
    ServerProcess server;
    QVERIFY2(server.Start(), server.ErrorText());
    const quint16 port = server.Port();

    QVERIFY2(server.Restart(), server.ErrorText());

    QCOMPARE(server.Port(), port);
    QVERIFY(server.IsRunning());
}

void LifecycleTest::warnsWhenOtherMachinesCanReachIt()
{
    TestFolder folder;
    PlainServer server(
        {QStringLiteral("--data"), folder.path(), QStringLiteral("--listen"), QStringLiteral("0.0.0.0:0")});
    QVERIFY(server.WaitUntilReady());

    QTRY_VERIFY(server.Log().contains("not-loopback"));
}

void LifecycleTest::leavesAStoreToTheServerThatUsesIt()
{
    ServerProcess first;
    QVERIFY2(first.Start(), first.ErrorText());

    PlainServer second({QStringLiteral("--data"), first.DataDir(), QStringLiteral("--listen"),
                        QStringLiteral("127.0.0.1:0")});

    QCOMPARE(second.ExitCode(), 1);
    QVERIFY(second.Log().contains("another server uses"));
    QVERIFY(first.IsRunning());
}

void LifecycleTest::startsThoughALockFileWasLeft_data()
{
    LockRemains::AddRows();
}

void LifecycleTest::startsThoughALockFileWasLeft()
{
    QFETCH(QByteArray, content);
    ServerProcess server;
    QVERIFY(LockRemains::Leave(server.DataDir() + QStringLiteral("/versions.db.lock"), content));

    QVERIFY2(server.Start(), server.ErrorText());

    // And keeps others out as ever.
    PlainServer second({QStringLiteral("--data"), server.DataDir(), QStringLiteral("--listen"),
                        QStringLiteral("127.0.0.1:0")});
    QCOMPARE(second.ExitCode(), 1);
    QVERIFY(second.Log().contains("another server uses"));
}

void LifecycleTest::endsWhenTheWorkstationSendsNothingOfUse()
{
    TestFolder folder;
    PlainServer server({QStringLiteral("--embedded"), QStringLiteral("--data"), folder.path()});
    QVERIFY(server.process.waitForStarted(PlainServer::waitMs));

    server.process.write("{\"token\":\"short\",\"account\":{\"pin\":\"p\",\"venderId\":\"v\"}}\n");

    QCOMPARE(server.ExitCode(), 1);
    QVERIFY(server.Log().contains("bad-embedding-line"));
}

void LifecycleTest::embedsOnlyOnThisMachine()
{
    TestFolder folder;
    PlainServer server({QStringLiteral("--embedded"), QStringLiteral("--listen"), QStringLiteral("0.0.0.0:0"),
                        QStringLiteral("--data"), folder.path()});

    QCOMPARE(server.ExitCode(), 1);
    QVERIFY(server.Log().contains("embedded-needs-loopback"));
}

namespace
{
const QByteArray metricsToken = "a-token-for-figures-0123456789abcdef";

QString Written(const TestFolder& folder, const QByteArray& text)
{
    QFile file(folder.filePath(QStringLiteral("token")));
    return file.open(QIODevice::WriteOnly) && file.write(text) == text.size() ? file.fileName() : QString();
}
} // namespace

void LifecycleTest::showsItsFiguresToThisMachineOrForAToken_data()
{
    QTest::addColumn<QByteArray>("header");
    QTest::addColumn<QByteArray>("token");
    QTest::addColumn<int>("status");
    QTest::newRow("from this machine") << QByteArray() << QByteArray() << 200;
    for (const char* header : {"Forwarded", "X-Forwarded-For", "X-Forwarded-Host", "X-Real-IP", "Via"}) {
        QTest::addRow("with %s", header) << QByteArray(header) << QByteArray() << 401;
        QTest::addRow("with %s and the token", header) << QByteArray(header) << metricsToken << 200;
    }
    QTest::newRow("with another token") << QByteArray("Via") << QByteArray(metricsToken + "x") << 401;
}

void LifecycleTest::showsItsFiguresToThisMachineOrForAToken()
{
    QFETCH(QByteArray, header);
    QFETCH(QByteArray, token);
    QFETCH(int, status);
    TestFolder folder;
    PlainServer server({QStringLiteral("--data"), folder.path(), QStringLiteral("--listen"),
                        QStringLiteral("127.0.0.1:0"), QStringLiteral("--metrics-token-file"),
                        Written(folder, metricsToken + "\n")});
    QVERIFY(server.WaitUntilReady());

    const auto answer = ApiClient(server.Port(), token)
                            .Ask("GET", "/metrics", {},
                                 header.isEmpty() ? ApiClient::Headers() : ApiClient::Headers{{header, "x"}});

    QCOMPARE(answer.status, status);
    QCOMPARE(answer.body.contains("rpa_connections"), status == 200);
}

void LifecycleTest::showsItsFiguresToNobodyElseWithoutAToken()
{
    TestFolder folder;
    PlainServer server(
        {QStringLiteral("--data"), folder.path(), QStringLiteral("--listen"), QStringLiteral("127.0.0.1:0")});
    QVERIFY(server.WaitUntilReady());

    // An empty token is none.
    QCOMPARE(ApiClient(server.Port(), {}).Ask("GET", "/metrics", {}, {{"Via", "x"}}).status, 401);
    QCOMPARE(ApiClient(server.Port(), {}).Ask("GET", "/metrics").status, 200);
}

void LifecycleTest::refusesAMetricsTokenThatIsEasyToGuess()
{
    TestFolder folder;
    PlainServer server({QStringLiteral("--data"), folder.path(), QStringLiteral("--metrics-token-file"),
                        Written(folder, "short\n")});

    QCOMPARE(server.ExitCode(), 2);
    QVERIFY2(server.Log().contains("--metrics-token-file"), server.Log().constData());
}

void LifecycleTest::takesItsLimitsFromTheCommandLine()
{
    TestFolder folder;
    PlainServer server({QStringLiteral("--data"), folder.path(), QStringLiteral("--listen"),
                        QStringLiteral("127.0.0.1:0"), QStringLiteral("--login-tries"), QStringLiteral("2"),
                        QStringLiteral("--connections-per-address"), QStringLiteral("1")});
    QVERIFY(server.WaitUntilReady());
    ApiClient client(server.Port(), {});
    const auto trySigningIn = [&client] {
        return client.Ask("POST", "/api/v1/sessions", R"({"account":"nobody","password":"x"})").status;
    };

    QCOMPARE(trySigningIn(), 401);
    QCOMPARE(trySigningIn(), 401);
    QCOMPARE(trySigningIn(), 429);
    RawClient second(server.Port());
    QCOMPARE(second.ReceiveStatus(), 503);
}

void LifecycleTest::refusesACommandLineItDoesNotUnderstand_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("a port that is none")
        << QStringList{QStringLiteral("--listen"), QStringLiteral("127.0.0.1:http")};
    QTest::newRow("an address without a port")
        << QStringList{QStringLiteral("--listen"), QStringLiteral("localhost")};
    QTest::newRow("an unknown command") << QStringList{QStringLiteral("serve")};
    QTest::newRow("an unknown option") << QStringList{QStringLiteral("--port"), QStringLiteral("1")};
    QTest::newRow("an unknown log level") << QStringList{QStringLiteral("--log"), QStringLiteral("all")};
    QTest::newRow("a limit that is no number")
        << QStringList{QStringLiteral("--connections"), QStringLiteral("many")};
    QTest::newRow("a limit below its least")
        << QStringList{QStringLiteral("--body-memory-per-account"), QStringLiteral("63")};
    QTest::newRow("a certificate without its key")
        << QStringList{QStringLiteral("--tls-certificate"), QStringLiteral("cert.pem")};
    QTest::newRow("a token file that is not there")
        << QStringList{QStringLiteral("--metrics-token-file"), QStringLiteral("/nowhere/token")};
    QTest::newRow("a store of an unknown kind")
        << QStringList{QStringLiteral("--store"), QStringLiteral("file.db")};
}

void LifecycleTest::refusesACommandLineItDoesNotUnderstand()
{
    QFETCH(QStringList, arguments);

    PlainServer server(arguments);
    const int code = server.ExitCode();

    QVERIFY(code == 1 || code == 2);
    QVERIFY(!server.Log().isEmpty());
}

QTEST_GUILESS_MAIN(LifecycleTest)
#include "tst_lifecycle.moc"
