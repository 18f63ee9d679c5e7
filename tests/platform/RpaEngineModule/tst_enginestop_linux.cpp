// SPDX-License-Identifier: Apache-2.0

#include "EngineRunFixture.h"
#include "LinuxProcesses.h"
#include "TestApp.h"

#include <QElapsedTimer>
#include <QTest>

// Runs that use what only Linux has to outlive their end: signals, forks, sessions of their own.
namespace
{
constexpr int patienceMs = 20000; // a busy machine ends a group of processes late
}

class EngineStopLinux : public QObject
{
    Q_OBJECT

private slots:
    void stopEndsTheWholeRun_data();
    void stopEndsTheWholeRun();
    void aRunThatEatsMemoryIsEnded();
    void nothingSurvivesTheNormalEnd();
    void aProgramThatFillsItsFolderToTheLastLeavesNoFolder();
};

void EngineStopLinux::stopEndsTheWholeRun_data()
{
    QTest::addColumn<QString>("program");

    QTest::newRow("ignored SIGTERM") << QStringLiteral(
        "import signal\nsignal.signal(signal.SIGTERM, signal.SIG_IGN)\nprint('up')\nwhile True: pass\n");
    QTest::newRow("children") << QStringLiteral(
        "import subprocess\nfor i in range(20): subprocess.Popen(['sleep', '4711.5'])\n"
        "print('up')\nwhile True: pass\n");
    QTest::newRow("daemonised grandchild")
        << QStringLiteral("import os, time\nif os.fork() == 0:\n    os.setsid()\n    if os.fork() == 0:\n"
                          "        os.execvp('sleep', ['sleep', '4711.5'])\n    "
                          "os._exit(0)\nprint('up')\nwhile True: time.sleep(1)\n");
    QTest::newRow("forks without end") << QStringLiteral(
        "import os, time\nprint('up', flush=True)\ntime.sleep(0.2)\nwhile True:\n    try:\n"
        "        if os.fork() == 0: os.execvp('sleep', ['sleep', '4711.5'])\n    except OSError: pass\n"
        "    time.sleep(0.01)\n");
}

void EngineStopLinux::stopEndsTheWholeRun()
{
    QFETCH(QString, program);
    EngineRunFixture engine;
    QVERIFY(engine.RunText(program));
    QTRY_VERIFY(EngineRunFixture::LogHas(QStringLiteral("up")));

    QElapsedTimer clock;
    clock.start();
    QVERIFY(engine.Engine()->Terminate(QStringLiteral("主流程")) || engine.life.IsOver());

    QVERIFY(engine.life.WaitUntilOver());
    const qint64 tookMs = clock.elapsed();
    QTRY_COMPARE_WITH_TIMEOUT(CountProcesses(QByteArray("4711.5")), 0, patienceMs);
    QVERIFY2(tookMs <= 1000, qPrintable(QStringLiteral("took %1 ms").arg(tookMs)));
}

void EngineStopLinux::aRunThatEatsMemoryIsEnded()
{
    EngineRunFixture engine;

    QVERIFY(engine.RunText(
        QStringLiteral("eaten = []\nwhile True: eaten.append(bytearray(64 * 1024 * 1024))\n")));

    QVERIFY(engine.life.WaitUntilOver(30000));
    QVERIFY2(EngineRunFixture::LogHas(QStringLiteral("内存")),
             qPrintable(EngineRunFixture::LogTexts().join(QLatin1Char('\n'))));
}

void EngineStopLinux::nothingSurvivesTheNormalEnd()
{
    EngineRunFixture engine;

    QVERIFY(engine.RunText(QStringLiteral(
        "import subprocess\nsubprocess.Popen(['sleep', '4712.5'], start_new_session=True)\n")));

    QVERIFY(engine.life.WaitUntilOver());
    QTRY_COMPARE_WITH_TIMEOUT(CountProcesses(QByteArray("4712.5")), 0, patienceMs);
}

// A folder that cannot be removed draws a warning, which fails this test.
void EngineStopLinux::aProgramThatFillsItsFolderToTheLastLeavesNoFolder()
{
    const QString program =
        QStringLiteral("import itertools, os\nprint('up')\nfor _ in range(3):\n    if os.fork() == 0: break\n"
                       "for i in itertools.count():\n    try:\n"
                       "        os.mkdir('d%d-%d' % (os.getpid(), i))\n    except BaseException: pass\n");
    for (int round = 0; round < 5; ++round) {
        EngineRunFixture engine;
        QVERIFY(engine.RunText(program));
        QTRY_VERIFY(EngineRunFixture::LogHas(QStringLiteral("up")));

        engine.Engine()->Terminate(QStringLiteral("主流程"));

        QVERIFY(engine.life.WaitUntilOver());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); // the folder goes with the run
    }
}

RPA_TEST_MAIN(EngineStopLinux)
#include "tst_enginestop_linux.moc"
