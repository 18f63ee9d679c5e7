// SPDX-License-Identifier: Apache-2.0

#include "ProblemPaneFixture.h"
#include "TestApp.h"

using namespace ProblemPaneFixture;

// What stopped a run, in the list of all problems.
class ProblemPaneRunTest : public QObject
{
    Q_OBJECT

private slots:
    void aRefusedRunShowsOnlyWhatStopsIt();
    void whatStoppedARunGoesWhenItIsMended();
    void aListThatTheAuthorOpenedStaysOpen();
    void aListThatTheAuthorClosedStaysClosed();
    void aFailedStatementStandsUntilItDoesSomethingElse();
    void aFailedLineStandsUntilTheProgramChanges();
    void whatOnlyThatRunMeetsStandsToo();
    void passesOverFindingsOfAnotherApp();
    void forgetsTheRunOfTheFormerApp();
};

void ProblemPaneRunTest::aRefusedRunShowsOnlyWhatStopsIt()
{
    Pane pane({Log("=a"), Set("b")});
    pane.PressFold();
    QTRY_COMPARE(pane.Counts(), QStringLiteral("错误 1　警告 0　提示 1"));
    QVERIFY(!pane.RunOnly()->isVisible());

    pane.widget.ShowRun(pane.Check());

    QVERIFY(pane.List()->isVisible());
    QCOMPARE(pane.Messages(), QStringList{QStringLiteral("变量“a”从未赋值")});
    QCOMPARE(pane.Counts(), QStringLiteral("错误 1　警告 0　提示 1"));
    QCOMPARE(pane.RunOnly()->text(), QStringLiteral("只看阻止运行的 1 个"));
    pane.RunOnly()->click();
    QCOMPARE(pane.Messages().size(), 2);
    pane.RunOnly()->click();
    QCOMPARE(pane.Messages().size(), 1);
}

void ProblemPaneRunTest::whatStoppedARunGoesWhenItIsMended()
{
    Pane pane({Log("=a"), Log("=b"), Set("c")});
    pane.PressFold();
    QTRY_COMPARE(pane.Counts(), QStringLiteral("错误 2　警告 0　提示 1"));
    pane.widget.ShowRun(pane.Check());
    QCOMPARE(pane.Messages().size(), 2);

    pane.Main()->Insert(QString(), 0, {Set("a")}); // another statement mends it
    QTRY_COMPARE(pane.Messages(), QStringList{QStringLiteral("变量“b”从未赋值")});
    QVERIFY(pane.RunOnly()->isChecked());
    pane.Main()->Take(pane.IdOf(2));

    QTRY_VERIFY(!pane.List()->isVisible());
    QVERIFY(!pane.RunOnly()->isVisible() && !pane.RunOnly()->isChecked());
    QCOMPARE(pane.Counts(), QStringLiteral("错误 0　警告 0　提示 1"));
}

void ProblemPaneRunTest::aListThatTheAuthorOpenedStaysOpen()
{
    Pane pane({Log("=a"), Set("c")});
    pane.widget.ShowRun(pane.Check());
    QCOMPARE(pane.Messages().size(), 1);

    pane.Main()->Take(pane.IdOf(0));

    QTRY_COMPARE(pane.Messages(), QStringList{QStringLiteral("变量“c”赋值后从未使用")});
    QVERIFY(pane.List()->isVisible());
}

void ProblemPaneRunTest::aListThatTheAuthorClosedStaysClosed()
{
    Pane pane({Log("=a"), Log("=b")});
    pane.PressFold();
    pane.widget.ShowRun(pane.Check());
    pane.PressFold();
    QVERIFY(!pane.List()->isVisible());

    pane.Main()->Take(pane.IdOf(0));

    QTRY_COMPARE(pane.Messages().size(), 1);
    QVERIFY(!pane.List()->isVisible());
}

void ProblemPaneRunTest::aFailedStatementStandsUntilItDoesSomethingElse()
{
    Pane pane({Log("=a"), Log("x")});
    pane.widget.ShowRun({pane.Failure(pane.IdOf(1))});
    RpaStatement noted = pane.Main()->GetRoot()->GetChild(1)->GetValues();
    noted.note = QStringLiteral("look into it");
    pane.Main()->SetValues(noted.id, noted);
    pane.Main()->SetArgument(pane.IdOf(0), QStringLiteral("text"), QStringLiteral("y"));
    QTRY_COMPARE(pane.Counts(), QStringLiteral("错误 1　警告 0　提示 0"));
    QCOMPARE(pane.Messages(), QStringList{QStringLiteral("除数为零")});

    pane.Main()->SetArgument(noted.id, QStringLiteral("text"), QStringLiteral("y"));

    QTRY_COMPARE(pane.Messages(), QStringList());
}

void ProblemPaneRunTest::aFailedLineStandsUntilTheProgramChanges()
{
    Pane pane({});
    pane.app->GetAppExtendInfo()->SetAppKind(1);
    pane.Main()->SetProgramText(QStringLiteral("x = 1\nprint(x / 0)"));
    pane.widget.ShowRun({pane.Failure(QString(), 2)});
    QCOMPARE(pane.Row(0)->text(2), QStringLiteral("第 2 行"));

    pane.Main()->SetProgramText(QStringLiteral("x = 1\nprint(x)"));

    QTRY_COMPARE(pane.Messages(), QStringList());
}

// A process that is run by another reads what that one sets, and misses it when it is run by itself.
void ProblemPaneRunTest::whatOnlyThatRunMeetsStandsToo()
{
    Pane pane({Set("a"), Step("process.run", {{QStringLiteral("process"), QStringLiteral("子")}})});
    RpaProcess* called = pane.app->GetProcessDataManager()->AddProcess(QStringLiteral("子"));
    called->SetStatements({Log("=a")});
    QTRY_COMPARE(pane.Counts(), QStringLiteral("没有发现问题"));
    const auto findings = RpaProcessCheck(*pane.app->GetProcessDataManager()).Check(QStringLiteral("子"));
    QCOMPARE(findings.size(), 1);

    pane.widget.ShowRun(findings);
    pane.Main()->Insert(QString(), 0, {Log("=b")});
    QTRY_COMPARE(pane.Counts(), QStringLiteral("错误 2　警告 0　提示 0"));
    QCOMPARE(pane.Messages(), QStringList{QStringLiteral("变量“a”从未赋值")});

    called->SetStatements({Log("x")});
    QTRY_COMPARE(pane.Counts(), QStringLiteral("错误 1　警告 0　提示 1"));
}

void ProblemPaneRunTest::passesOverFindingsOfAnotherApp()
{
    Pane pane({Log("x")});
    RpaCheckInfo foreign = pane.Failure(pane.IdOf(0));
    foreign.processName = QStringLiteral("无");

    pane.widget.ShowRun({pane.Failure(QStringLiteral("of another app")), foreign});

    QCOMPARE(pane.Messages(), QStringList());
}

void ProblemPaneRunTest::forgetsTheRunOfTheFormerApp()
{
    Pane pane({Log("x")});
    pane.widget.ShowRun({pane.Failure(pane.IdOf(0))});
    const Pane other({});

    pane.widget.SetApp(other.app.data());

    QVERIFY(!pane.RunOnly()->isVisible());
    QTRY_COMPARE(pane.Counts(), QStringLiteral("没有发现问题"));
}

RPA_TEST_MAIN(ProblemPaneRunTest)
#include "tst_problempane_run.moc"
