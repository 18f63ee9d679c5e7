// SPDX-License-Identifier: Apache-2.0

#include <WbSystem/ChildProcess.h>

#include <QtTest>

#include <windows.h>

namespace
{

const QString shell = QStringLiteral("cmd.exe");

// A shell that waits for a grandchild, which waits for a minute.
QStringList TwoGenerations()
{
    return {QStringLiteral("/c"), QStringLiteral("cmd.exe /c ping -n 60 127.0.0.1")};
}

// A pipe whose writing end any careless child would inherit.
class OpenPipe
{
public:
    OpenPipe()
    {
        SECURITY_ATTRIBUTES inheritable{sizeof inheritable, nullptr, TRUE};
        CreatePipe(&reading, &writing, &inheritable, 0);
    }
    ~OpenPipe() { CloseHandle(reading); }

    // After our own end is closed: whether nobody else holds one.
    bool IsAlone()
    {
        CloseHandle(writing);
        return !PeekNamedPipe(reading, nullptr, 0, nullptr, nullptr, nullptr) &&
               GetLastError() == ERROR_BROKEN_PIPE;
    }

private:
    HANDLE reading = nullptr;
    HANDLE writing = nullptr;
};

} // namespace

class ChildProcessTest : public QObject
{
    Q_OBJECT

private slots:
    void worksLikeAnyProcess()
    {
        ChildProcess process;

        process.Start(shell, {QStringLiteral("/c"), QStringLiteral("echo hello & exit 7")});

        QVERIFY(process.waitForFinished());
        QCOMPARE(process.readAllStandardOutput().trimmed(), QByteArray("hello"));
        QCOMPARE(process.exitStatus(), QProcess::NormalExit);
        QCOMPARE(process.exitCode(), 7);
    }

    void readsWhatItIsGiven()
    {
        ChildProcess process;
        process.Start(shell, {QStringLiteral("/c"), QStringLiteral("more")});

        process.write("one\r\ntwo\r\n");
        process.closeWriteChannel();

        QVERIFY(process.waitForFinished());
        QVERIFY(process.readAllStandardOutput().contains("two"));
    }

    void killsEveryGeneration()
    {
        ChildProcess process;
        process.Start(shell, TwoGenerations());
        QTRY_VERIFY(process.Measure().processes >= 3);

        process.KillAll();

        QVERIFY(process.waitForFinished());
        QCOMPARE(process.exitStatus(), QProcess::CrashExit);
        QTRY_COMPARE(process.Measure().processes, 0);
    }

    void whatAProcessLeftBehindDiesWithIt()
    {
        ChildProcess process;
        process.Start(shell, {QStringLiteral("/c"), QStringLiteral("start /b ping -n 60 127.0.0.1")});

        QVERIFY(process.waitForFinished());

        QTRY_COMPARE(process.Measure().processes, 0);
    }

    void nothingOutlivesTheObject()
    {
        HANDLE child = nullptr;
        {
            ChildProcess process;
            process.Start(shell, TwoGenerations());
            QTRY_VERIFY(process.Measure().processes >= 3);
            child = OpenProcess(SYNCHRONIZE, FALSE, static_cast<DWORD>(process.processId()));
            QVERIFY(child);
        }

        QCOMPARE(WaitForSingleObject(child, 5000), WAIT_OBJECT_0);
        CloseHandle(child);
    }

    void inheritsItsStandardHandlesOnly()
    {
        OpenPipe pipe;
        ChildProcess process;
        process.Start(shell, TwoGenerations());
        QVERIFY(process.waitForStarted());

        QVERIFY(pipe.IsAlone());
    }

    void aMissingProgramIsAFailedStart()
    {
        ChildProcess process;

        process.Start(QStringLiteral("no such program.exe"), QStringList());

        QVERIFY(!process.waitForStarted());
        QCOMPARE(process.error(), QProcess::FailedToStart);
        QCOMPARE(process.Measure().processes, 0);
    }
};

QTEST_GUILESS_MAIN(ChildProcessTest)
#include "tst_childprocess_windows.moc"
