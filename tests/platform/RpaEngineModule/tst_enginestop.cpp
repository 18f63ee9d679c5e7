// SPDX-License-Identifier: Apache-2.0

#include "EngineRunFixture.h"
#include "TestApp.h"

#include <RpaEngineCore/IAppParamEngine.h>
#include <RpaEngineModule/IRunPreparation.h>
#include <RpaEngineModule/RpaProcessRelatedUIControler.h>

#include <QElapsedTimer>
#include <QTest>

namespace
{
class Preparation : public IRunPreparation
{
public:
    Preparation() { RpaEngineModule::Instance()->SetPreparation(this); }
    ~Preparation() override { RpaEngineModule::Instance()->SetPreparation(nullptr); }

    QString GetRefusal() override { return refusal; }
    void Stop() override { ++stops; }

    QString refusal;
    int stops = 0;
};

class DemandingParams : public IAppParamEngine
{
public:
    QStringList GetParamNames() const override { return {}; }
    QVariant GetParam(const QString&) const override { return {}; }
    bool SetParam(const QString&, const QVariant&) override { return false; }
    QString DemandValues() override
    {
        ++demands;
        return problem;
    }

    QString problem;
    int demands = 0;
};
} // namespace

// A run that does its worst is gone within a second.
class EngineStop : public QObject
{
    Q_OBJECT

private slots:
    void stopEndsTheWholeRun_data();
    void stopEndsTheWholeRun();
    void aStoppedProgramMayCleanUp();
    void aFloodOfOutputLeavesTheLogBounded();
    void aRunStoppedBeforeItsProgramConnectsEndsQuietly();
    void aRunGivenUpWhileItWaitsIsNotStarted();
    void noRunStartsAgainstItsPreparation();
    void noRunStartsWithoutTheValuesItDemands();
    void whatIsMissingIsToldWhileARunWaits();
};

void EngineStop::stopEndsTheWholeRun_data()
{
    QTest::addColumn<QString>("program");

    QTest::newRow("busy loop") << QStringLiteral("print('up')\nwhile True: pass\n");
    QTest::newRow("swallowed exceptions") << QStringLiteral(
        "print('up')\nwhile True:\n    try:\n        while True: pass\n    except BaseException: pass\n");
    QTest::newRow("long sleep") << QStringLiteral("import time\nprint('up')\ntime.sleep(600)\n");
    QTest::newRow("output flood") << QStringLiteral("print('up')\nwhile True: print('x' * 200)\n");
}

void EngineStop::stopEndsTheWholeRun()
{
    QFETCH(QString, program);
    EngineRunFixture engine;
    QVERIFY(engine.RunText(program));
    QTRY_VERIFY(EngineRunFixture::LogHas(QStringLiteral("up")) ||
                EngineRunFixture::LogHas(QStringLiteral("xxx")));

    QElapsedTimer clock;
    clock.start();
    QVERIFY(engine.Engine()->Terminate(QStringLiteral("主流程")) || engine.life.IsOver());

    QVERIFY(engine.life.WaitUntilOver());
    const qint64 tookMs = clock.elapsed();
    QVERIFY2(tookMs <= 1000, qPrintable(QStringLiteral("took %1 ms").arg(tookMs)));
    // Stopped, not failed: also when the stop met the program in the middle of a line.
    QVERIFY2(engine.life.events.contains(QStringLiteral("terminate 主流程")),
             qPrintable(engine.life.events.join(QLatin1Char(10))));
}

void EngineStop::aStoppedProgramMayCleanUp()
{
    EngineRunFixture engine;
    QVERIFY(engine.RunText(QStringLiteral("import time\nprint('up')\ntry:\n    while True: "
                                          "time.sleep(0.01)\nfinally:\n    print('cleaned')\n")));
    QTRY_VERIFY(EngineRunFixture::LogHas(QStringLiteral("up")));

    engine.Engine()->Terminate(QStringLiteral("主流程"));

    QVERIFY(engine.life.WaitUntilOver());
    QVERIFY2(EngineRunFixture::LogHas(QStringLiteral("cleaned")),
             qPrintable(EngineRunFixture::LogTexts().join(QLatin1Char(10))));
    QVERIFY(engine.life.events.contains(QStringLiteral("terminate 主流程")));
}

void EngineStop::aFloodOfOutputLeavesTheLogBounded()
{
    EngineRunFixture engine;

    QVERIFY(engine.RunText(QStringLiteral("for i in range(100000): print(i, 'y' * 100)\n")));

    QVERIFY(engine.life.WaitUntilOver(30000));
    QVERIFY(EngineRunFixture::LogHas(QStringLiteral("99999 yyy")));
    QVERIFY(engine.Source()->GetLines().size() <= 10000);
}

// Warnings fail this test; whether the child connects before it is killed differs from run to run.
void EngineStop::aRunStoppedBeforeItsProgramConnectsEndsQuietly()
{
    for (int round = 0; round < 30; ++round) {
        EngineRunFixture engine;
        QVERIFY(engine.RunText(QStringLiteral("print('up')\n")));

        engine.Engine()->Terminate(QStringLiteral("主流程"));

        QVERIFY(engine.life.WaitUntilOver());
        QVERIFY(engine.life.events.contains(QStringLiteral("terminate 主流程")));
    }
}

void EngineStop::aRunGivenUpWhileItWaitsIsNotStarted()
{
    EngineRunFixture engine;
    Preparation preparation;
    engine.Engine()->SetWaiting(true);
    QVERIFY(RpaProcessRelatedUIControler::Instance()->IsRunning());

    QVERIFY(engine.Engine()->Terminate(QStringLiteral("主流程")));
    QCOMPARE(preparation.stops, 1);
    engine.Engine()->SetWaiting(false);

    // Whoever waited goes on at once, and starts nothing; the next one who asks is meant.
    QVERIFY(!RpaProcessRelatedUIControler::Instance()->IsRunning());
    QVERIFY(engine.RunText(QStringLiteral("print('up')\n")));
    QVERIFY(engine.life.events.isEmpty());
    QVERIFY(engine.RunText(QStringLiteral("print('up')\n")));
    QVERIFY(engine.life.WaitUntilOver());
}

void EngineStop::noRunStartsAgainstItsPreparation()
{
    EngineRunFixture engine;
    Preparation preparation;
    preparation.refusal = QStringLiteral("正在安装");

    QVERIFY(!engine.RunText(QStringLiteral("print('up')\n")));

    QVERIFY(EngineRunFixture::LogHas(QStringLiteral("正在安装")));
    QVERIFY(engine.life.events.isEmpty());
    preparation.refusal.clear();
    QVERIFY(engine.RunText(QStringLiteral("print('up')\n")));
    QVERIFY(engine.life.WaitUntilOver());
}

void EngineStop::noRunStartsWithoutTheValuesItDemands()
{
    EngineRunFixture engine;
    DemandingParams params;
    params.problem = QStringLiteral("请填写“客户”");
    engine.Engine()->SetAppParamEngine(&params);

    // Nothing failed: no other message is due.
    QVERIFY(engine.RunText(QStringLiteral("print('up')\n")));

    QVERIFY(EngineRunFixture::LogHas(QStringLiteral("没有运行：请填写“客户”")));
    QVERIFY(engine.life.events.isEmpty());
    QVERIFY(!RpaProcessRelatedUIControler::Instance()->IsRunning());
    params.problem.clear();
    QVERIFY(engine.RunText(QStringLiteral("print('up')\n")));
    QVERIFY(engine.life.WaitUntilOver());
}

void EngineStop::whatIsMissingIsToldWhileARunWaits()
{
    EngineRunFixture engine;
    DemandingParams params;
    engine.Engine()->SetAppParamEngine(&params);

    engine.Engine()->SetWaiting(true);
    QCOMPARE(params.demands, 1);
    engine.Engine()->SetWaiting(false);

    QCOMPARE(params.demands, 1);
}

RPA_TEST_MAIN(EngineStop)

#include "tst_enginestop.moc"
