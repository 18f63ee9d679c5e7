// SPDX-License-Identifier: Apache-2.0

#include "RpaChildProcess_p.h"
#include "TestFolder.h"

#include <QSignalSpy>
#include <QtTest>

namespace
{

// The shell in place of Python: what is tried here is the group around it.
class Group
{
public:
    bool Start(const QString& commands)
    {
        return child.Start(QStringLiteral("cmd.exe"), {QStringLiteral("/c"), commands}, folder.path(),
                           &reason);
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

class ChildProcess : public QObject
{
    Q_OBJECT

private slots:
    void itsOutputIsHandedOverAtItsEnd()
    {
        Group group;

        QVERIFY(group.Start(QStringLiteral("echo hello & exit 3")));

        QTRY_COMPARE(group.exited.size(), 1);
        QVERIFY(!group.HasCrashed());
        QCOMPARE(group.Output(), QStringLiteral("hello"));
        QVERIFY(!group.child.IsRunning());
    }

    void theFloodOfOneThatNeverConnectsIsCut()
    {
        Group group;

        QVERIFY(group.Start(QStringLiteral("for /l %i in (1,1,2000) do @echo 0123456789")));

        QTRY_COMPARE_WITH_TIMEOUT(group.exited.size(), 1, 30000);
        QVERIFY(group.Output().size() <= 8 * 1024);
        QVERIFY(group.Output().size() > 8 * 1000);
    }

    void killIsToldAsACrash()
    {
        Group group;
        QVERIFY(group.Start(QStringLiteral("ping -n 60 127.0.0.1")));
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

        QVERIFY(group.Start(
            QStringLiteral("for /l %i in (1,1,8) do @start /b ping -n 60 127.0.0.1 & ping -n 60 127.0.0.1")));

        QTRY_COMPARE_WITH_TIMEOUT(group.passed.size(), 1, 30000);
        QVERIFY(group.passed.first().first().toString().contains(QStringLiteral("超过 4 个")));
        QTRY_COMPARE(group.exited.size(), 1);
    }

    void theEnvironmentIsCleaned()
    {
        qputenv("PYTHONSTARTUP", "C:\\nowhere");
        qputenv("Pip_Index_Url", "http://example.invalid");
        qputenv("RPA_KEPT", "kept");
        Group group;

        QVERIFY(group.Start(QStringLiteral("set")));

        QTRY_COMPARE(group.exited.size(), 1);
        QVERIFY(group.Output().contains(QStringLiteral("RPA_KEPT=kept")));
        QVERIFY(!group.Output().contains(QStringLiteral("PYTHONSTARTUP"), Qt::CaseInsensitive));
        QVERIFY(!group.Output().contains(QStringLiteral("PIP_"), Qt::CaseInsensitive));
    }

    void aMissingInterpreterIsNamed()
    {
        Group group;

        const bool started = group.child.Start(QStringLiteral("C:\\nowhere\\python.exe"), {},
                                               group.folder.path(), &group.reason);

        QVERIFY(!started);
        QVERIFY(group.reason.contains(QStringLiteral("C:\\nowhere\\python.exe")));
    }
};

QTEST_GUILESS_MAIN(ChildProcess)
#include "tst_childprocess_windows.moc"
