// SPDX-License-Identifier: Apache-2.0

// What the engine is handed and told when a process runs.
#include "EditorCalls.h"
#include "TestApp.h"
#include "ToastWatcher.h"

#include <RpaAppData/RpaParamData.h>
#include <RpaAppData/RpaTableData.h>
#include <RpaAppData/RpaUIData.h>
#include <RpaAppData/RpaUIDataManager.h>
#include <RpaEditorManager/RpaAppEditorWidget.h>
#include <RpaEngineTool/IRpaInspector.h>
#include <RpaEngineTool/RpaEngineTool.h>
#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaHtmlNodeManager.h>
#include <RpaProcessData/RpaProcess.h>
#include <RpaProcessData/RpaUiaNodeManager.h>
#include <WbBrowserLite/WbBrowserLite.h>

#include <QAction>
#include <QTabBar>
#include <QtTest>

namespace
{
const QString run = QStringLiteral("流程乙");
const QString reported = QStringLiteral("event OXA_MyApplications_Execute");

class CapturingInspector : public IRpaInspector
{
public:
    CapturingInspector() { RpaEngineTool::Instance()->SetHtmlInspector(this); }
    bool IsCapturing() const override { return true; }
};

// Content in which everything that a run needs has a name of its own.
void FillNamed(RpaAppData& content, const QString& mark)
{
    RpaNode node;
    node.name = QStringLiteral("按钮") + mark;
    content.GetHtmlNodeManager()->AddNode(node);
    node.name = QStringLiteral("窗口") + mark;
    content.GetUiaNodeManager()->AddNode(node);
    content.GetProcessDataManager()->AddProcess(QStringLiteral("流程") + mark);
    RpaParamItem param;
    param.name = QStringLiteral("参数") + mark;
    content.GetUIDataManager()->GetUIData(0)->GetParamData()->InsertItem(-1, param);
    RpaTableColumn column;
    column.name = QStringLiteral("列") + mark;
    content.GetUIDataManager()->GetUIData(0)->GetTableData()->InsertColumn(-1, column);
}

void UseExcel(RpaAppData& content)
{
    RpaStatement statement;
    statement.command = QStringLiteral("excel.create");
    statement.output = QStringLiteral("工作簿");
    content.GetProcessDataManager()->GetProcess(0)->Insert(QString(), -1, {statement});
}
} // namespace

class RunCallsTest : public EditorCalls
{
    Q_OBJECT

private slots:
    void handsTheEngineEverythingOfTheOpenVersionInOrder()
    {
        Open(Versions(), Content(QStringLiteral("hello"),
                                 [](RpaAppData& content) { FillNamed(content, QStringLiteral("甲")); }));
        PickWithoutData(QStringLiteral("乙版"));
        StandInRequests::AnswerData(Content(
            QStringLiteral("hello"), [](RpaAppData& content) { FillNamed(content, QStringLiteral("乙")); }));
        CallLog::Take();

        Start(run);

        const QStringList calls = CallLog::Take();
        QCOMPARE(calls,
                 QStringList({reported, QStringLiteral("browser: some"), QStringLiteral("params: 参数乙"),
                              QStringLiteral("columns: 列乙"), QStringLiteral("elements: 按钮乙"),
                              QStringLiteral("windows: 窗口乙"),
                              QStringLiteral("processes: ") + MainProcess() + QStringLiteral(" 流程乙"),
                              QStringLiteral("run of app1 with key1 in develop"),
                              QStringLiteral("translate statements: yes"),
                              QStringLiteral("report statements: yes"), QStringLiteral("check 流程乙"),
                              QStringLiteral("execute 流程乙")}));
    }

    void runsAProgramAsItStands()
    {
        Open(Versions(), Content(QStringLiteral("hello"), UseExcel), 1);

        Start(run);

        const QStringList calls = CallLog::Take();
        QVERIFY(calls.contains(QStringLiteral("translate statements: no")));
        QVERIFY(calls.contains(QStringLiteral("report statements: no")));
        QCOMPARE(calls.mid(calls.indexOf(QStringLiteral("report statements: no")) + 1),
                 QStringList(QStringLiteral("execute 流程乙")));
    }

    void runsWithTheParametersOfTheActivePage()
    {
        Open(Versions(), Content(QStringLiteral("hello"), [](RpaAppData& content) {
                 FillNamed(content, QStringLiteral("甲"));
                 content.GetUIDataManager()->AddUIData(QStringLiteral("第二页"), {});
                 RpaParamItem param;
                 param.name = QStringLiteral("参数二");
                 content.GetUIDataManager()->GetUIData(1)->GetParamData()->InsertItem(-1, param);
             }));
        author->Find("widgetTabBar")->findChild<QTabBar*>()->setCurrentIndex(1);

        Start(run);

        QVERIFY(CallLog::Take().contains(QStringLiteral("params: 参数二")));
    }

    void runsWithoutABrowser()
    {
        WbBrowserLite::Instance()->SetBrowserFactory([](QWidget*) { return nullptr; });
        Open();

        Start(run);

        QCOMPARE(CallLog::Take().value(1), QStringLiteral("browser: none"));
    }

    void handsNothingOfAnAppThatIsNotThere()
    {
        author = std::make_unique<EditorDriver>();
        CallLog::Take();

        Start(run);

        QCOMPARE(CallLog::Take(),
                 QStringList({reported, QStringLiteral("browser: some"), QStringLiteral("params: "),
                              QStringLiteral("columns: "), QStringLiteral("elements: none"),
                              QStringLiteral("windows: none"), QStringLiteral("processes: none"),
                              QStringLiteral("run of none"), QStringLiteral("translate statements: no"),
                              QStringLiteral("report statements: no")}));
    }

    void executesNothingThatTheEngineFoundWrong()
    {
        Open();
        StandInEngine::SetCheckResult(false);
        ToastWatcher toasts;

        Start(run);

        QCOMPARE(AfterTheSwitches(), QStringList(QStringLiteral("check 流程乙")));
        QCOMPARE(toasts.GetToasts(),
                 QVector<SeenToast>(
                     {{QStringLiteral("节点数据异常，异常信息在【运行日志】或可视化页面中查看!"), 2}}));
        // The refused run stays pending: it goes on when it is told to.
        StandInEngine::SetCheckResult(true);
        GoOn();
        QCOMPARE(CallLog::Take(),
                 QStringList({QStringLiteral("check 流程乙"), QStringLiteral("execute 流程乙")}));
    }

    void executesNothingWhileAnElementIsBeingCaptured()
    {
        Open();
        ToastWatcher toasts;
        {
            const CapturingInspector capturing;
            Start(run);
        }

        QCOMPARE(AfterTheSwitches(), QStringList(QStringLiteral("check 流程乙")));
        QCOMPARE(toasts.GetToasts(),
                 QVector<SeenToast>({{QStringLiteral("正在捕获节点，请先停止捕获再执行"), 2}}));
        GoOn();
        QCOMPARE(CallLog::Take(),
                 QStringList({QStringLiteral("check 流程乙"), QStringLiteral("execute 流程乙")}));
    }

    void forgetsTheRunOnceItWasStartedOrNot_data()
    {
        QTest::addColumn<bool>("started");
        QTest::newRow("started") << true;
        QTest::newRow("not started") << false;
    }

    void forgetsTheRunOnceItWasStartedOrNot()
    {
        QFETCH(bool, started);
        Open();
        StandInEngine::SetExecuteResult(started);
        ToastWatcher toasts;

        Start(run);
        CallLog::Take();
        GoOn();

        QCOMPARE(CallLog::Take(), QStringList());
        const QVector<SeenToast> expected =
            started ? QVector<SeenToast>() : QVector<SeenToast>{{QStringLiteral("执行流程失败"), 2}};
        QCOMPARE(toasts.GetToasts(), expected);
    }

    void installsWhatTheProcessUsesNowAndGoesOnAfterwards()
    {
        Open(Versions(), Content(QStringLiteral("hello"), UseExcel));

        Start(run);
        QCOMPARE(AfterTheSwitches(), QStringList(QStringLiteral("install packages: openpyxl")));

        emit packages->SigInstallFinished();
        QCOMPARE(CallLog::Take(),
                 QStringList({QStringLiteral("check 流程乙"), QStringLiteral("execute 流程乙")}));
        emit packages->SigInstallFinished();
        QCOMPARE(CallLog::Take(), QStringList());
        Start(run);
        QCOMPARE(AfterTheSwitches(),
                 QStringList({QStringLiteral("check 流程乙"), QStringLiteral("execute 流程乙")}));
    }

    void goesOnWhenThePackagesAreThereAtOnce()
    {
        Open(Versions(), Content(QStringLiteral("hello"), UseExcel));
        packages->isEager = true;

        Start(run);

        QCOMPARE(AfterTheSwitches(),
                 QStringList({QStringLiteral("install packages: openpyxl"), QStringLiteral("check 流程乙"),
                              QStringLiteral("execute 流程乙")}));
    }

    void stopsTheProcessThatItIsTold()
    {
        Open();
        Start(run);
        CallLog::Take();

        Stop(QStringLiteral("另一个"));

        QCOMPARE(CallLog::Take(), QStringList(QStringLiteral("terminate 另一个")));
    }

    void goesOnWithARunThatWasStoppedBeforeItsPackagesWereThere()
    {
        Open(Versions(), Content(QStringLiteral("hello"), UseExcel));
        Start(run);
        CallLog::Take();

        Stop(run);
        emit packages->SigInstallFinished();

        QCOMPARE(CallLog::Take(),
                 QStringList({QStringLiteral("terminate 流程乙"), QStringLiteral("check 流程乙"),
                              QStringLiteral("execute 流程乙")}));
    }

    void reportsARunBeforeItTakesTheOneThatWaits()
    {
        Open(Versions(), Content(QStringLiteral("hello"), UseExcel));
        Start(run);
        CallLog::Take();
        CallLog::WhenNoted(reported, [this] { emit packages->SigInstallFinished(); });

        Start(QStringLiteral("流程丙"));

        const QStringList calls = CallLog::Take();
        QCOMPARE(calls.mid(0, 3),
                 QStringList({reported, QStringLiteral("check 流程乙"), QStringLiteral("execute 流程乙")}));
        QCOMPARE(calls.mid(calls.size() - 2),
                 QStringList({QStringLiteral("check 流程丙"), QStringLiteral("execute 流程丙")}));
    }

    void knowsItsRunBeforeItSetsTheEngineUp()
    {
        Open();
        CallLog::WhenNoted(QStringLiteral("browser: some"), [this] { GoOn(); });

        Start(run);

        QCOMPARE(CallLog::Take().mid(0, 4),
                 QStringList({reported, QStringLiteral("browser: some"), QStringLiteral("check 流程乙"),
                              QStringLiteral("execute 流程乙")}));
    }

    void takesNoPackagesBeforeAnAppIsThere()
    {
        author = std::make_unique<EditorDriver>();
        CallLog::Take();

        QVERIFY(QMetaObject::invokeMethod(author->GetEditor(), "SlotUpdatePackageInfo",
                                          Q_ARG(QString, QStringLiteral("{}"))));

        QCOMPARE(CallLog::Take(), QStringList());
        QCOMPARE(author->GetEditor()->BeforeClose(), BeforeCloseResult::NothingPending);
    }

private:
    void Start(const QString& process)
    {
        QVERIFY(QMetaObject::invokeMethod(author->Find("pageUIDesign"), "SigRunProcess",
                                          Q_ARG(QString, process)));
    }

    void Stop(const QString& process)
    {
        QVERIFY(QMetaObject::invokeMethod(author->Find("pageUIDesign"), "SigStopProcess",
                                          Q_ARG(QString, process)));
    }

    void GoOn() { QVERIFY(QMetaObject::invokeMethod(author->GetEditor(), "SlotCheckPackageFinished")); }

    static QString MainProcess()
    {
        RpaAppData content;
        content.InitDefault();
        return content.GetProcessDataManager()->GetProcessNameFirst();
    }

    static QStringList AfterTheSwitches()
    {
        const QStringList calls = CallLog::Take();
        return calls.mid(calls.indexOf(QStringLiteral("report statements: yes")) + 1);
    }
};

RPA_TEST_MAIN(RunCallsTest)
#include "tst_runcalls.moc"
