// SPDX-License-Identifier: Apache-2.0

#include "RpaChildProcess_p.h"
#include "TestFolder.h"

#include <QSignalSpy>
#include <QtTest>

namespace
{

#ifdef Q_OS_WIN
const QStringList shell{QStringLiteral("cmd.exe"), QStringLiteral("/c")};
const QString nowhere = QStringLiteral("C:\\nowhere\\python.exe");
const QString flood = QStringLiteral("for /l %i in (1,1,2000) do @echo 0123456789");
const QString waiting = QStringLiteral("ping -n 60 127.0.0.1");
const QString manyWaiting =
    QStringLiteral("for /l %i in (1,1,8) do @start /b ping -n 60 127.0.0.1 & ping -n 60 127.0.0.1");
const QString environment = QStringLiteral("set");
#else
const QStringList shell{QStringLiteral("/bin/sh"), QStringLiteral("-c")};
const QString nowhere = QStringLiteral("/nowhere/python3");
const QString flood = QStringLiteral("yes 0123456789 | head -n 2000");
const QString waiting = QStringLiteral("sleep 60");
const QString manyWaiting = QStringLiteral("for i in 1 2 3 4 5 6 7 8; do sleep 60 & done; wait");
const QString environment = QStringLiteral("env");
#endif

// The shell in place of Python: what is tried here is the group around it.
class Group
{
public:
    bool Start(const QString& commands)
    {
        return child.Start(shell.first(), {shell.last(), commands}, folder.path(), &reason);
    }

    bool HasCrashed() const { return exited.first().at(0).toBool(); }
    QString Output() const { return exited.first().at(1).toString(); }

    TestFolder folder;
    RpaChildProcess child;
    QString reason;
    QSignalSpy exited{&child, &RpaChildProcess::SigExited};
    QSignalSpy passed{&child, &RpaChildProcess::SigLimitPassed};
};

} // namespace

class RunChild : public QObject
{
    Q_OBJECT

private slots:
    void itsOutputIsHandedOverAtItsEnd()
    {
        Group group;

        QVERIFY(group.Start(QStringLiteral("echo hello")));

        QTRY_COMPARE(group.exited.size(), 1);
        QVERIFY(!group.HasCrashed());
        QCOMPARE(group.Output(), QStringLiteral("hello"));
        QVERIFY(!group.child.IsRunning());
    }

    void theFloodOfOneThatNeverConnectsIsCut()
    {
        Group group;

        QVERIFY(group.Start(flood));

        QTRY_COMPARE_WITH_TIMEOUT(group.exited.size(), 1, 30000);
        QVERIFY(group.Output().size() <= 8 * 1024);
        QVERIFY(group.Output().size() > 8 * 1000);
    }

    void killIsToldAsACrash()
    {
        Group group;
        QVERIFY(group.Start(waiting));
        QVERIFY(group.child.IsRunning());

        group.child.Kill();

        QTRY_COMPARE(group.exited.size(), 1);
        QVERIFY(group.HasCrashed());
    }

    void tooManyProcessesEndTheRun()
    {
        Group group;
        RpaChildLimits limits;
        limits.processes = 4;
        group.child.SetLimits(limits);

        QVERIFY(group.Start(manyWaiting));

        QTRY_COMPARE_WITH_TIMEOUT(group.passed.size(), 1, 30000);
        QVERIFY(group.passed.first().first().toString().contains(QStringLiteral("超过 4 个")));
        QTRY_COMPARE(group.exited.size(), 1);
    }

    void theEnvironmentIsCleaned()
    {
        qputenv("PYTHONSTARTUP", "nowhere");
        qputenv("PIP_INDEX_URL", "http://example.invalid");
        qputenv("RPA_KEPT", "kept");
        Group group;

        QVERIFY(group.Start(environment));

        QTRY_COMPARE(group.exited.size(), 1);
        QVERIFY(group.Output().contains(QStringLiteral("RPA_KEPT=kept")));
        QVERIFY(!group.Output().contains(QStringLiteral("PYTHONSTARTUP"), Qt::CaseInsensitive));
        QVERIFY(!group.Output().contains(QStringLiteral("PIP_"), Qt::CaseInsensitive));
    }

    void aMissingInterpreterIsNamed()
    {
        Group group;

        const bool started = group.child.Start(nowhere, {}, group.folder.path(), &group.reason);

        QVERIFY(!started);
        QVERIFY(group.reason.contains(nowhere));
    }
};

QTEST_GUILESS_MAIN(RunChild)
#include "tst_runchild.moc"
