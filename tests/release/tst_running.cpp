// SPDX-License-Identifier: Apache-2.0

#include "ModalDriver.h"
#include "OrderRecorder.h"
#include "RecordingMonitor.h"
#include "RunFixture.h"
#include "TestApp.h"
#include "ToastWatcher.h"

#include <RpaEditorManager/RpaAppEditorWidget.h>
#include <RpaEngineCore/IProcessLifeCycle.h>
#include <RpaEngineCore/IRpaDebugger.h>
#include <RpaEngineCore/RpaProcessLifeCycleManager.h>
#include <RpaEngineModule/RpaEngineModule.h>
#include <WbBrowserLite/WbBrowserLite.h>

#include <QLayout>
#include <QSignalSpy>

#include <functional>

namespace
{
const QString captureText = QStringLiteral("正在捕获节点，请先停止捕获再执行");
const QString commentText =
    QStringLiteral("节点数据引用异常，引用了已经注释的节点，详细信息在可视化页面中查看!");
const QString checkText = QStringLiteral("节点数据异常，异常信息在【运行日志】或可视化页面中查看!");
const QString executeText = QStringLiteral("执行流程失败");

// Hears of the engine's runs while it lives.
class RunWatcher : public IProcessLifeCycle
{
public:
    RunWatcher() { RpaProcessLifeCycleManager::Instance()->AddLifeCycle(this); }
    ~RunWatcher() override { RpaProcessLifeCycleManager::Instance()->RemoveLifeCycle(this); }

    void ProcessStart(const QString& processName) override
    {
        started.append(processName);
        if (onStart)
            onStart();
    }
    void ProcessFinish(const QString& processName) override { finished.append(processName); }
    void ProcessTerminate(const QString& processName) override { terminated.append(processName); }

    QStringList started;
    QStringList finished;
    QStringList terminated;
    std::function<void()> onStart;
};

IRpaDebugger* Debugger()
{
    return RpaEngineModule::Instance()->GetEngineDebugger();
}
} // namespace

class RunningTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { world.Start(); }
    void init() { world.SignIn(); }

    void doesNotRunWhileAnElementIsBeingCaptured()
    {
        EditorDriver author;
        Open(author, 0, [](RpaAppData&) {});
        const CapturingInspector capturing;
        RecordingMonitor monitor;
        QSignalSpy checked(Debugger(), &IRpaDebugger::SigCheckNode);
        ToastWatcher toasts;

        Run::Start(author, mainProcess);

        QCOMPARE(toasts.GetToasts(), QVector<SeenToast>({{captureText, 2}}));
        QCOMPARE(monitor.GetEventIds(), QStringList(QStringLiteral("OXA_MyApplications_Execute")));
        QCOMPARE(checked.size(), 1); // the engine's own check, without findings
        QVERIFY(checked.at(0).at(0).value<QList<RpaCheckInfo>>().isEmpty());
        QVERIFY(!RpaEngineModule::Instance()->Terminate(mainProcess)); // nothing runs
    }

    void doesNotRunWithReferencesToDisabledStatements()
    {
        EditorDriver author;
        Open(author, 0, [](RpaAppData& content) {
            Run::Add(content, QStringLiteral("variable.set"),
                     {{QStringLiteral("name"), QStringLiteral("甲")},
                      {QStringLiteral("value"), QStringLiteral("1")}},
                     QString(), false);
            Run::Add(content, QStringLiteral("variable.set"),
                     {{QStringLiteral("name"), QStringLiteral("乙")},
                      {QStringLiteral("value"), QStringLiteral("=甲")}});
        });
        QSignalSpy checked(Debugger(), &IRpaDebugger::SigCheckNode);
        ToastWatcher toasts;

        Run::Start(author, mainProcess);

        QCOMPARE(toasts.GetToasts(), QVector<SeenToast>({{commentText, 2}}));
        // Once: the engine's own check, which always tells its result, was not called.
        QCOMPARE(checked.size(), 1);
        const auto findings = checked.at(0).at(0).value<QList<RpaCheckInfo>>();
        QCOMPARE(findings.size(), 1);
        QCOMPARE(findings.first().rule, QStringLiteral("disabled-reference"));
    }

    void doesNotRunWithFindings()
    {
        EditorDriver author;
        Open(author, 0, [](RpaAppData& content) {
            Run::Add(content, QStringLiteral("variable.set"),
                     {{QStringLiteral("name"), QStringLiteral("乙")},
                      {QStringLiteral("value"), QStringLiteral("=没有定义")}});
        });
        QSignalSpy checked(Debugger(), &IRpaDebugger::SigCheckNode);
        ToastWatcher toasts;

        Run::Start(author, mainProcess);

        QCOMPARE(toasts.GetToasts(), QVector<SeenToast>({{checkText, 2}}));
        QCOMPARE(checked.size(), 1);
        QVERIFY(!checked.at(0).at(0).value<QList<RpaCheckInfo>>().isEmpty());
    }

    void runsAProgramWithoutChecksOfStatements()
    {
        EditorDriver author;
        Open(author, 1, [](RpaAppData& content) { Run::UseExcel(content); });
        PatientPackageService packages;
        const CapturingInspector capturing;
        QSignalSpy checked(Debugger(), &IRpaDebugger::SigCheckNode);
        ToastWatcher toasts;
        ModalDriver noQuestion;

        Run::Start(author, mainProcess);

        QCOMPARE(toasts.GetTexts(), QStringList(captureText));
        QCOMPARE(checked.size(), 0);
        QVERIFY(packages.installed.isEmpty());
        // The package list was not refreshed, so nothing is to be saved.
        QCOMPARE(author.GetEditor()->BeforeClose(), BeforeCloseResult::NothingPending);
    }

    void saysWhenTheProcessDidNotStart()
    {
        EditorDriver author;
        Open(author, 1, [](RpaAppData&) {});
        ToastWatcher toasts;

        Run::Start(author, QStringLiteral("没有这个流程"));
        QCOMPARE(toasts.GetToasts(), QVector<SeenToast>({{executeText, 2}}));

        // No run is pending any more.
        QVERIFY(QMetaObject::invokeMethod(author.GetEditor(), "SlotCheckPackageFinished"));
        QCOMPARE(toasts.GetCount(), 1);
    }

    void goesOnOnceWhenThePackagesAreInstalled()
    {
        PatientPackageService packages;
        EditorDriver author;
        Open(author, 0, [](RpaAppData& content) { Run::UseExcel(content); });
        const CapturingInspector capturing;
        ToastWatcher toasts;
        Run::Start(author, mainProcess);
        QCOMPARE(packages.installed.size(), 1);
        QCOMPARE(toasts.GetCount(), 0);

        emit packages.SigInstallFinished();
        QCOMPARE(toasts.GetTexts(), QStringList(captureText));

        emit packages.SigInstallFinished();
        QCOMPARE(toasts.GetCount(), 1);
    }

    void doesNothingWithoutAPendingRun()
    {
        EditorDriver author;
        Open(author, 0, [](RpaAppData&) {});
        ToastWatcher toasts;
        QSignalSpy checked(Debugger(), &IRpaDebugger::SigCheckNode);

        QVERIFY(QMetaObject::invokeMethod(author.GetEditor(), "SlotCheckPackageFinished"));

        QCOMPARE(toasts.GetCount(), 0);
        QCOMPARE(checked.size(), 0);
    }

    void reportsTheRunBeforeItInstallsAndChecks()
    {
        PatientPackageService packages;
        EditorDriver author;
        Open(author, 0, [](RpaAppData& content) { Run::UseExcel(content); });
        const CapturingInspector capturing;
        RecordingMonitor monitor;
        OrderRecorder order;
        connect(&packages, &PatientPackageService::SigInstallCalled, &order, [&] {
            order.Note(QStringLiteral("install after %1 report(s)").arg(monitor.GetReports().size()));
        });
        order.Watch(Debugger(), &IRpaDebugger::SigCheckNode, QStringLiteral("check"));

        Run::Start(author, mainProcess);
        emit packages.SigInstallFinished();

        QCOMPARE(order.GetEvents(),
                 QStringList({QStringLiteral("install after 1 report(s)"), QStringLiteral("check")}));
    }

    void runsTheProcessOfTheAppAndLocksTheVersionsMeanwhile()
    {
        EditorDriver author;
        Open(author, 0, [](RpaAppData& content) {
            Run::Add(content, QStringLiteral("variable.set"),
                     {{QStringLiteral("name"), QStringLiteral("甲")},
                      {QStringLiteral("value"), QStringLiteral("1")}});
        });
        RunWatcher run;
        bool isLocked = false;
        run.onStart = [&] { isLocked = !author.Find("version_combo")->isEnabled(); };
        ToastWatcher toasts;

        Run::Start(author, mainProcess);
        QTRY_COMPARE_WITH_TIMEOUT(run.finished, QStringList(mainProcess), 20000);

        QCOMPARE(run.started, QStringList(mainProcess));
        QVERIFY(isLocked);
        QTRY_VERIFY(author.Find("version_combo")->isEnabled());
        QCOMPARE(toasts.GetTexts(), QStringList());
    }

    void stopsTheRun()
    {
        EditorDriver author;
        Open(author, 0, WaitLong);
        RunWatcher run;
        ToastWatcher toasts;
        Run::Start(author, mainProcess);
        QTRY_COMPARE_WITH_TIMEOUT(run.started.size(), 1, 20000);

        Run::Stop(author, mainProcess);

        QTRY_COMPARE_WITH_TIMEOUT(run.terminated, QStringList(mainProcess), 20000);
        QTRY_VERIFY(author.Find("version_combo")->isEnabled());
        QCOMPARE(toasts.GetTexts(), QStringList());
    }

    void isTakenAwayWhileTheProcessRuns()
    {
        EditorDriver author;
        Open(author, 0, WaitLong);
        RunWatcher run;
        Run::Start(author, mainProcess);
        QTRY_COMPARE_WITH_TIMEOUT(run.started.size(), 1, 20000);

        author.Destroy();

        // The run goes on without its editor until somebody stops it.
        QVERIFY(RpaEngineModule::Instance()->Terminate(mainProcess));
        QTRY_COMPARE_WITH_TIMEOUT(run.terminated, QStringList(mainProcess), 20000);
    }

    void stopsTheNamedProcessThoughItStartedNoneItself()
    {
        EditorDriver former;
        Open(former, 0, WaitLong);
        RunWatcher run;
        Run::Start(former, mainProcess);
        QTRY_COMPARE_WITH_TIMEOUT(run.started.size(), 1, 20000);
        former.Destroy();
        EditorDriver author;

        Run::Stop(author, QStringLiteral("另一个流程"));
        Run::Stop(author, mainProcess);

        QTRY_COMPARE_WITH_TIMEOUT(run.terminated, QStringList(mainProcess), 20000);
    }

    void stoppingWhileNothingRunsShowsNothing()
    {
        EditorDriver author;
        Open(author, 0, [](RpaAppData&) {});
        ToastWatcher toasts;

        Run::Stop(author, mainProcess);

        QCOMPARE(toasts.GetCount(), 0);
        QVERIFY(!RpaEngineModule::Instance()->Terminate(mainProcess));
    }

    void runsWithoutABrowser()
    {
        WbBrowserLite::Instance()->SetBrowserFactory([](QWidget*) { return nullptr; });
        EditorDriver author;
        WbBrowserLite::Instance()->SetBrowserFactory(nullptr);
        Open(author, 0, [](RpaAppData& content) {
            Run::Add(content, QStringLiteral("variable.set"),
                     {{QStringLiteral("name"), QStringLiteral("甲")},
                      {QStringLiteral("value"), QStringLiteral("1")}});
        });
        QVERIFY(!author.Find("widgetContainer")->layout());
        RunWatcher run;
        ToastWatcher toasts;

        Run::Start(author, mainProcess);

        QTRY_COMPARE_WITH_TIMEOUT(run.finished, QStringList(mainProcess), 20000);
        QCOMPARE(toasts.GetTexts(), QStringList());
    }

    void goesNoFurtherWithoutAnApp()
    {
        EditorDriver author;
        RecordingMonitor monitor;
        ToastWatcher toasts;

        Run::Start(author, QStringLiteral("p"));

        QCOMPARE(monitor.GetReports().size(), 1);
        QCOMPARE(toasts.GetCount(), 0);
    }

private:
    static void WaitLong(RpaAppData& content)
    {
        Run::Add(content, QStringLiteral("wait"), {{QStringLiteral("seconds"), QStringLiteral("600")}});
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
    }

    EditorWorld world;
    QString mainProcess;
};

RPA_TEST_MAIN(RunningTest)
#include "tst_running.moc"
