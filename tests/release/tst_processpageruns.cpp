// SPDX-License-Identifier: Apache-2.0

// Runs that are asked for on the page of the processes go the way of a tool's.
#include "RecordingMonitor.h"
#include "RunFixture.h"
#include "TestApp.h"
#include "ToastWatcher.h"

#include <RpaEditorManager/RpaAppEditorWidget.h>
#include <RpaEngineModule/RpaDebugSession.h>
#include <RpaEngineModule/RpaEngineModule.h>

#include <QToolButton>

namespace
{
constexpr int engineWaitMs = 60000;

RpaDebugSession* Session()
{
    return RpaEngineModule::Instance()->GetDebugSession();
}

bool WaitUntil(RpaDebugSession::State state)
{
    return QTest::qWaitFor([state] { return Session()->GetState() == state; }, engineWaitMs);
}
} // namespace

class ProcessPageRunsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { world.Start(); }
    void init() { world.SignIn(); }

    void runAProcessThatNoToolStarts_data()
    {
        QTest::addColumn<int>("kind");
        QTest::newRow("visual") << 0;
        QTest::newRow("program") << 1;
    }

    void runAProcessThatNoToolStarts()
    {
        QFETCH(int, kind);
        EditorDriver author;
        Open(author, kind, WaitLong);
        RecordingMonitor monitor;
        ToastWatcher toasts;

        author.Press("actionRunButton");

        QCOMPARE(Session()->GetState(), RpaDebugSession::State::Running);
        QCOMPARE(monitor.GetEventIds(), QStringList(QStringLiteral("OXA_MyApplications_Execute")));
        QVERIFY(!author.Find("version_combo")->isEnabled());
        QVERIFY(author.Find("actionPauseButton")->isEnabled());
        author.Press("actionStopButton");
        QVERIFY(WaitUntil(RpaDebugSession::State::Idle));
        QVERIFY(author.Find("version_combo")->isEnabled());
        QCOMPARE(toasts.GetTexts(), QStringList());
    }

    void areRefusedLikeOthersAndForgotten()
    {
        EditorDriver author;
        Open(author, 0, WaitLong);
        RecordingMonitor monitor;
        ToastWatcher toasts;
        {
            const CapturingInspector capturing;
            author.Press("actionStepOverButton");
        }
        QCOMPARE(toasts.GetTexts(), QStringList(QStringLiteral("正在捕获节点，请先停止捕获再执行")));
        QCOMPARE(monitor.GetEventIds().size(), 1);
        QCOMPARE(Session()->GetState(), RpaDebugSession::State::Idle);
        QVERIFY(!Session()->TakeNextRun().pauseAtFirst); // the next run is a whole one
    }

    void controlARunOfATool()
    {
        EditorDriver author;
        Open(author, 0, WaitLong);
        Run::Start(author, mainProcess);
        QVERIFY(author.Find("actionPauseButton")->isEnabled());

        author.Press("actionStopButton");

        QVERIFY(WaitUntil(RpaDebugSession::State::Idle));
    }

private:
    static void WaitLong(RpaAppData& content)
    {
        Run::Add(content, QStringLiteral("wait"), {{QStringLiteral("seconds"), QStringLiteral("600")}});
        content.GetProcessDataManager()->GetProcess(0)->SetProgramText(
            QStringLiteral("import time\ntime.sleep(600)\n"));
    }

    void Open(EditorDriver& author, int kind, const EditorWorld::Fill& fill)
    {
        const RobotExecuteInfo app = world.CreateApp(kind);
        world.AddVersion(app, QStringLiteral("版本1"), [&](RpaAppData& content) {
            fill(content);
            mainProcess = Run::MainProcess(content);
        });
        author.GetEditor()->SetExecuteInfo(app);
        QTRY_COMPARE(author.GetSelectedVersion(), QStringLiteral("版本1"));
        author.ShowPage("pushButtonProcess");
        QTRY_VERIFY(author.Find("actionRunButton")->isVisible());
    }

    EditorWorld world;
    QString mainProcess;
};

RPA_TEST_MAIN(ProcessPageRunsTest)
#include "tst_processpageruns.moc"
