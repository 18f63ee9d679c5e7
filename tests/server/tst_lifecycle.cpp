#include "LockRemains.h"
#include "PlainServer.h"
#include "ServerProcess.h"

#include <QTemporaryDir>
#include <QTest>

class LifecycleTest : public QObject
{
    Q_OBJECT

private slots:
    void namesTheDatabasesItCanUse();
    void stopsWhenItsInputCloses();
    void comesBackOnTheSamePort();
    void warnsWhenOtherMachinesCanReachIt();
    void leavesAStoreToTheServerThatUsesIt();
    void startsThoughALockFileWasLeft_data();
    void startsThoughALockFileWasLeft();
    void endsWhenTheWorkstationSendsNothingOfUse();
    void embedsOnlyOnThisMachine();
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
    QTemporaryDir folder;
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
    QTemporaryDir folder;
    PlainServer server({QStringLiteral("--embedded"), QStringLiteral("--data"), folder.path()});
    QVERIFY(server.process.waitForStarted(PlainServer::waitMs));

    server.process.write("{\"token\":\"short\",\"account\":{\"pin\":\"p\",\"venderId\":\"v\"}}\n");

    QCOMPARE(server.ExitCode(), 1);
    QVERIFY(server.Log().contains("bad-embedding-line"));
}

void LifecycleTest::embedsOnlyOnThisMachine()
{
    QTemporaryDir folder;
    PlainServer server({QStringLiteral("--embedded"), QStringLiteral("--listen"), QStringLiteral("0.0.0.0:0"),
                        QStringLiteral("--data"), folder.path()});

    QCOMPARE(server.ExitCode(), 1);
    QVERIFY(server.Log().contains("embedded-needs-loopback"));
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
