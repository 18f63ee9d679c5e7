#include "PlainServer.h"
#include "ServerProcess.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>

// What the server owes to systems with signals and file modes.
class PosixTest : public QObject
{
    Q_OBJECT

private slots:
    void stopsGracefullyOnASignal_data();
    void stopsGracefullyOnASignal();
    void keepsTheStoreToItsOwner();
};

void PosixTest::stopsGracefullyOnASignal_data()
{
    QTest::addColumn<int>("signal");
    QTest::newRow("SIGTERM") << SIGTERM;
    QTest::newRow("SIGINT") << SIGINT;
}

void PosixTest::stopsGracefullyOnASignal()
{
    QFETCH(int, signal);
    QTemporaryDir folder;
    PlainServer server(
        {QStringLiteral("--data"), folder.path(), QStringLiteral("--listen"), QStringLiteral("127.0.0.1:0")});
    QVERIFY(server.WaitUntilReady());

    ::kill(static_cast<pid_t>(server.process.processId()), signal);

    QCOMPARE(server.ExitCode(), 0);
    const QByteArray log = server.Log();
    QVERIFY(log.contains("\"stopped\""));
    QVERIFY(!log.contains("not-loopback"));
}

void PosixTest::keepsTheStoreToItsOwner()
{
    ServerProcess server;
    QVERIFY2(server.Start(), server.ErrorText());

    const auto others =
        QFileDevice::ReadGroup | QFileDevice::WriteGroup | QFileDevice::ReadOther | QFileDevice::WriteOther;

    QCOMPARE(QFile::permissions(server.DataDir() + QStringLiteral("/versions.db")) & others,
             QFileDevice::Permissions());
}

QTEST_GUILESS_MAIN(PosixTest)
#include "tst_posix.moc"
