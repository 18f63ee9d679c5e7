// SPDX-License-Identifier: Apache-2.0

#include "ApiClient.h"
#include "PlainServer.h"
#include "ServerProcess.h"
#include "TestFolder.h"

#include <QFile>
#include <QTest>

#include <csignal>
#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

// What the server owes to systems with signals and file modes.
class PosixTest : public QObject
{
    Q_OBJECT

private slots:
    void stopsGracefullyOnASignal_data();
    void stopsGracefullyOnASignal();
    void keepsTheStoreToItsOwner();
    void endsAlsoWhenNobodyReadsItsLog();
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
    TestFolder folder;
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

void PosixTest::endsAlsoWhenNobodyReadsItsLog()
{
    TestFolder folder;
    const QByteArray pipe = folder.filePath(QStringLiteral("log")).toLocal8Bit();
    QCOMPARE(::mkfifo(pipe.constData(), 0600), 0);
    const int unread = ::open(pipe.constData(), O_RDWR | O_CLOEXEC);
    QVERIFY(unread >= 0);
    PlainServer server({QStringLiteral("--data"), folder.path(), QStringLiteral("--log"),
                        QStringLiteral("debug"), QStringLiteral("--listen"), QStringLiteral("127.0.0.1:0")},
                       {}, QString::fromLocal8Bit(pipe));
    QVERIFY(server.WaitUntilReady());
    ApiClient client(server.Port(), {});
    int inPipe = 0;
    for (int i = 0; i < 3000; ++i)
        QCOMPARE(client.Get("/api/v1/health").status, 200);
    QCOMPARE(::ioctl(unread, FIONREAD, &inPipe), 0);
    QVERIFY2(inPipe > 60000, "the log does not fill the pipe");

    QElapsedTimer elapsed;
    elapsed.start();
    ::kill(static_cast<pid_t>(server.process.processId()), SIGTERM);
    const int code = server.ExitCode();
    qInfo("ended after %lld ms", elapsed.elapsed());
    ::close(unread);

    QCOMPARE(code, 0);
}

QTEST_GUILESS_MAIN(PosixTest)
#include "tst_posix.moc"
