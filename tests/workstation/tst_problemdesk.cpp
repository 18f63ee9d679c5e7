// SPDX-License-Identifier: Apache-2.0

#include "EditorPage.h"
#include "EditorWorld.h"
#include "PageFixture.h"
#include "TestApp.h"

#include <RpaAppData/RpaAppData.h>
#include <RpaAppData/RpaAppExtendInfo.h>
#include <RpaAppData/RpaToolData.h>
#include <RpaAppData/RpaUIData.h>
#include <RpaAppData/RpaUIDataManager.h>
#include <RpaProblems/RpaProblemPane.h>
#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaPackageInfo.h>
#include <RpaProcessData/RpaProcess.h>
#include <RpaProcessEditor/ProcessProgramEditorWidget.h>
#include <RpaProcessEditor/ProcessVisualEditorWidget.h>
#include <WbBaseUI/RpaTabBar.h>
#include <WbBaseUI/WbTheme.h>

#include <QApplication>
#include <QLabel>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QToolButton>
#include <QTreeView>
#include <QTreeWidget>
#include <QtTest>

namespace
{
constexpr int longWaitMs = 30000;

RpaStatement Log(const char* text)
{
    RpaStatement statement;
    statement.command = QStringLiteral("log");
    statement.arguments = {{QStringLiteral("text"), QLatin1String(text)}};
    return statement;
}

RpaProcess* MainOf(const RpaAppData& app)
{
    return app.GetProcessDataManager()->GetProcess(0);
}

void ReadUndefined(RpaAppData& app)
{
    MainOf(app)->SetStatements({Log("x"), Log("=a")});
}
} // namespace

// The problems below an editor of the workstation: of what it shows, on each of its pages.
class tst_ProblemDesk : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init() { world.SignIn(); }
    void cleanup() { page.reset(); }
    void goesToAStatement();
    void mendsAStatement();
    void goesToAUIPageAndMendsItsTool();
    void goesToALineOfAProgram();
    void listsAPackageOfAProgram();
    void goesToTheInstructions();
    void aRefusedRunShowsWhatStopsIt();
    void letsGoOfTheAppThatIsLeft();

private:
    void Open(const EditorWorld::Fill& fill, int kind = 0);
    QTreeWidget* List() const { return Child<QTreeWidget>(*page, "problemList"); }
    QString Counts() const { return Child<QLabel>(*page, "labelProblemCounts")->text(); }
    RpaAppData* App() const { return Child<RpaProblemPane>(*page, "problemPane")->GetApp(); }
    void Choose(const char* rule) const;
    void Fix(const char* rule) const;

    EditorWorld world;
    std::unique_ptr<EditorPage> page;
};

void tst_ProblemDesk::initTestCase()
{
    WbTheme::Instance()->Apply(WbTheme::Scheme::Light);
    world.Start();
}

void tst_ProblemDesk::Open(const EditorWorld::Fill& fill, int kind)
{
    const RobotExecuteInfo info = world.CreateApp(kind);
    world.AddVersion(info, QStringLiteral("v1"), fill);
    page = std::make_unique<EditorPage>();
    page->resize(1280, 720);
    page->show();
    page->activateWindow();
    AppRecord record;
    record.id = info.GetAppId();
    record.kind = kind;
    page->Open(record);
    QTRY_VERIFY_WITH_TIMEOUT(App(), longWaitMs);
    QTest::mouseClick(Child<QToolButton>(*page, "problemFoldButton"), Qt::LeftButton);
}

void tst_ProblemDesk::Choose(const char* rule) const
{
    const auto isThere = [this, rule] {
        for (int row = 0; row < List()->topLevelItemCount(); ++row) {
            QTreeWidgetItem* item = List()->topLevelItem(row);
            if (item->data(0, Qt::UserRole).value<RpaProblem>().rule == QLatin1String(rule)) {
                List()->setCurrentItem(item);
                return true;
            }
        }
        return false;
    };
    QTRY_VERIFY_WITH_TIMEOUT(isThere(), longWaitMs);
}

void tst_ProblemDesk::Fix(const char* rule) const
{
    Choose(rule);
    emit List()->customContextMenuRequested(QPoint());
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    QVERIFY(menu);
    for (QAction* action : menu->actions())
        if (action->text().startsWith(QStringLiteral("修复")))
            action->trigger();
    menu->close();
}

void tst_ProblemDesk::goesToAStatement()
{
    Open(&ReadUndefined);
    Choose("undefined-variable");
    QVERIFY(List()->isVisible());

    QTest::keyClick(List(), Qt::Key_Return);

    auto* view = Child<QTreeView>(*page, "statementView");
    QTRY_VERIFY(view->isVisible());
    QCOMPARE(view->currentIndex().row(), 1);
    QVERIFY(List()->isVisible());
}

void tst_ProblemDesk::mendsAStatement()
{
    Open(&ReadUndefined);

    Fix("undefined-variable");

    QCOMPARE(MainOf(*App())->GetStatementCount(), 3);
    QTRY_COMPARE(Counts(), QStringLiteral("没有发现问题"));
}

void tst_ProblemDesk::goesToAUIPageAndMendsItsTool()
{
    Open([](RpaAppData& app) {
        RpaToolItem tool;
        tool.text = QStringLiteral("统计");
        tool.processName = QStringLiteral("无");
        app.GetUIDataManager()->AddUIData(QStringLiteral("第二页"), tool);
        app.GetUIDataManager()->SetIndexActive(0);
    });
    QTest::mouseClick(Child<QWidget>(*page, "pushButtonProcess"), Qt::LeftButton);
    Choose("tool-missing-process");

    QTest::keyClick(List(), Qt::Key_Return);
    QTRY_VERIFY(Child<RpaTabBar>(*page, "widgetTabBar")->isVisible());
    QCOMPARE(App()->GetUIDataManager()->GetIndexActive(), 1);

    Fix("tool-missing-process");
    QCOMPARE(App()->GetUIDataManager()->GetUIData(1)->GetToolData()->GetItem(0).processName, QString());
    Choose("tool-without-process");
}

void tst_ProblemDesk::goesToALineOfAProgram()
{
    Open([](RpaAppData& app) { MainOf(app)->SetProgramText(QStringLiteral("x = 1\nprint(x\n")); },
         AppKindProgram);
    Choose("syntax-error");

    QTest::keyClick(List(), Qt::Key_Return);

    auto* program = page->findChild<ProcessProgramEditorWidget*>();
    QVERIFY(program);
    QTRY_VERIFY(program->isVisible());
    QCOMPARE(program->findChild<QPlainTextEdit*>()->textCursor().blockNumber(), 1);
}

void tst_ProblemDesk::listsAPackageOfAProgram()
{
    Open([](RpaAppData& app) { MainOf(app)->SetProgramText(QStringLiteral("import numpy\nprint(numpy)")); },
         AppKindProgram);

    Fix("unlisted-package");

    QCOMPARE(App()->GetPackageInfo()->GetListPackageItemPtr().size(), 1);
    QTRY_COMPARE(Counts(), QStringLiteral("没有发现问题"));
}

void tst_ProblemDesk::goesToTheInstructions()
{
    Open([](RpaAppData& app) { app.GetAppExtendInfo()->manual = QStringLiteral("<a href=\"\">甲</a>"); });
    Choose("dead-link");

    QTest::keyClick(List(), Qt::Key_Return);

    QTRY_VERIFY(Child<QWidget>(*page, "pageExtendInfo")->isVisible());
}

void tst_ProblemDesk::aRefusedRunShowsWhatStopsIt()
{
    Open([](RpaAppData& app) {
        RpaStatement unused;
        unused.command = QStringLiteral("variable.set");
        unused.arguments = {{QStringLiteral("name"), QStringLiteral("b")}};
        MainOf(app)->SetStatements({Log("=a"), unused});
    });
    QTRY_COMPARE(Counts(), QStringLiteral("错误 1　警告 0　提示 1"));
    QTest::mouseClick(Child<QToolButton>(*page, "problemFoldButton"), Qt::LeftButton);
    QVERIFY(!List()->isVisible());

    Child<QPushButton>(*page, "toolButton0")->click();

    QTRY_VERIFY(List()->isVisible());
    QCOMPARE(List()->topLevelItemCount(), 1);
    QCOMPARE(List()->topLevelItem(0)->text(0), QStringLiteral("变量“a”从未赋值"));
}

void tst_ProblemDesk::letsGoOfTheAppThatIsLeft()
{
    Open(&ReadUndefined);
    MainOf(*App())->Take(MainOf(*App())->GetRoot()->GetChild(0)->GetId()); // a search will begin
    const QPointer<RpaAppData> app(App());

    page->Discard();

    QVERIFY(!App());
    QVERIFY(!app);
    QCOMPARE(Counts(), QString()); // nothing was looked at
}

RPA_TEST_MAIN(tst_ProblemDesk)
#include "tst_problemdesk.moc"
