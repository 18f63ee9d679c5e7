// SPDX-License-Identifier: Apache-2.0

#include "LinuxProcesses.h"

#include <WbSystem/ChildProcess.h>

#include <QtTest>

#include <cstdio>

namespace
{
const QString parentCommand = QStringLiteral("--parent");

// A process that has left its session and its parent, and is known by the seconds that it sleeps.
QString Daemon(const char* seconds)
{
    return QStringLiteral("(setsid sleep %1 &) ").arg(QLatin1String(seconds));
}

int CountSleepers(const char* seconds)
{
    return CountProcesses(QByteArray("sleep") + '\0' + seconds);
}

void StartShell(ChildProcess* process, const QString& commands)
{
    process->Start(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), commands});
}

QByteArray OutputOf(ChildProcess* process, const QString& commands)
{
    StartShell(process, commands);
    return process->waitForFinished() ? process->readAllStandardOutput().trimmed() : QByteArray();
}

// What the test starts as a program of its own, to kill it.
int BeParent()
{
    ChildProcess process;
    process.Start(QStringLiteral("sleep"), {QStringLiteral("4724.5")});
    process.waitForStarted();
    std::puts("up");
    std::fflush(stdout);
    return QCoreApplication::exec();
}
} // namespace

class ChildProcessTest : public QObject
{
    Q_OBJECT

private slots:
    void worksLikeAnyProcess();
    void readsWhatItIsGiven();
    void killsEveryGeneration();
    void whatAProcessLeftBehindDiesWithIt();
    void nothingOutlivesTheObject();
    void diesWithAParentThatIsKilled();
    void memoryIsBounded();
    void itsEnvironmentIsClean();
    void anEnvironmentOfItsOwnIsTaken();
    void aMissingProgramIsAFailedStart();
};

void ChildProcessTest::worksLikeAnyProcess()
{
    ChildProcess process;

    const QByteArray output = OutputOf(&process, QStringLiteral("echo hello; exit 7"));

    QCOMPARE(output, QByteArray("hello"));
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), 7);
}

void ChildProcessTest::readsWhatItIsGiven()
{
    ChildProcess process;
    process.Start(QStringLiteral("cat"), {});

    process.write("one\ntwo\n");
    process.closeWriteChannel();

    QVERIFY(process.waitForFinished());
    QCOMPARE(process.readAllStandardOutput(), QByteArray("one\ntwo\n"));
}

void ChildProcessTest::killsEveryGeneration()
{
    ChildProcess process;
    StartShell(&process, Daemon("4721.5") + QStringLiteral("& sleep 60"));
    QTRY_VERIFY(CountSleepers("4721.5") > 0);
    QVERIFY(process.Measure().processes > 1);
    QVERIFY(process.Measure().memoryBytes > 0);

    process.KillAll();

    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitStatus(), QProcess::CrashExit);
    QTRY_COMPARE(CountSleepers("4721.5"), 0);
    QCOMPARE(process.Measure().processes, 0);
}

void ChildProcessTest::whatAProcessLeftBehindDiesWithIt()
{
    ChildProcess process;
    StartShell(&process, Daemon("4722.5"));

    QVERIFY(process.waitForFinished());

    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QTRY_COMPARE(CountSleepers("4722.5"), 0);
}

void ChildProcessTest::nothingOutlivesTheObject()
{
    {
        ChildProcess process;
        StartShell(&process, Daemon("4723.5") + QStringLiteral("& sleep 60"));
        QTRY_VERIFY(CountSleepers("4723.5") > 0);
    }

    QTRY_COMPARE(CountSleepers("4723.5"), 0);
}

void ChildProcessTest::diesWithAParentThatIsKilled()
{
    QProcess parent;
    parent.start(QCoreApplication::applicationFilePath(), {parentCommand});
    QVERIFY(parent.waitForReadyRead());
    QTRY_VERIFY(CountSleepers("4724.5") > 0);

    parent.kill();

    QVERIFY(parent.waitForFinished());
    QTRY_COMPARE(CountSleepers("4724.5"), 0);
}

void ChildProcessTest::memoryIsBounded()
{
    ChildProcess process;
    process.SetLimits(qint64(512) * 1024 * 1024, 16);

    QCOMPARE(OutputOf(&process, QStringLiteral("ulimit -v")), QByteArray("524288"));
}

void ChildProcessTest::itsEnvironmentIsClean()
{
    qputenv("PIP_INDEX_URL", "given");
    ChildProcess process;
    qunsetenv("PIP_INDEX_URL");

    const QByteArray output = OutputOf(&process, QStringLiteral("env"));

    QVERIFY(output.contains("LC_ALL=C.UTF-8"));
    QVERIFY(!output.contains("PIP_INDEX_URL"));
}

void ChildProcessTest::anEnvironmentOfItsOwnIsTaken()
{
    ChildProcess process;
    QProcessEnvironment environment;
    environment.insert(QStringLiteral("RPA_OWN"), QStringLiteral("own"));
    process.setProcessEnvironment(environment);

    QCOMPARE(OutputOf(&process, QStringLiteral("echo $RPA_OWN")), QByteArray("own"));
}

void ChildProcessTest::aMissingProgramIsAFailedStart()
{
    ChildProcess process;

    process.Start(QStringLiteral("/nowhere/python3"), {});

    QVERIFY(!process.waitForStarted());
    QCOMPARE(process.error(), QProcess::FailedToStart);
    QCOMPARE(process.Measure().processes, 0);
}

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    if (app.arguments().contains(parentCommand))
        return BeParent();
    ChildProcessTest test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_childprocess_linux.moc"
