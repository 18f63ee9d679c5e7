// SPDX-License-Identifier: Apache-2.0

#include "EditorPage.h"
#include "EditorWorld.h"
#include "PageFixture.h"
#include "RunLog.h"
#include "RunPage.h"
#include "TestApp.h"

#include <RpaAppData/RpaAppData.h>
#include <RpaAppData/RpaParamData.h>
#include <RpaAppData/RpaToolData.h>
#include <RpaAppData/RpaUIData.h>
#include <RpaAppData/RpaUIDataManager.h>
#include <RpaEngineCore/IRpaLogManager.h>
#include <RpaEngineModule/RpaEngineModule.h>
#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaProcess.h>
#include <WbBaseUI/WbTheme.h>

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QtTest>

namespace
{
constexpr int longWaitMs = 30000;

// A page with one tool, which logs the customer, who must be given.
void DemandCustomer(RpaAppData& app)
{
    RpaStatement statement;
    statement.command = QStringLiteral("log");
    statement.arguments = {{QStringLiteral("text"), QStringLiteral("done")}};
    app.GetProcessDataManager()->GetProcess(0)->Insert(QString(), -1, {statement});
    RpaUIData* const page = app.GetUIDataManager()->GetUIData(0);
    RpaParamItem free;
    free.name = QStringLiteral("备注");
    page->GetParamData()->InsertItem(-1, free);
    RpaParamItem demanded;
    demanded.name = QStringLiteral("客户");
    demanded.required = true;
    page->GetParamData()->InsertItem(-1, demanded);
}

bool HasRun()
{
    return !RunLog().filter(QStringLiteral("运行完成")).isEmpty();
}

bool HasStarted()
{
    return !RunLog().filter(QStringLiteral("开始运行流程")).isEmpty();
}
} // namespace

// A run without a value that it must have: on the page of a released app, and in the editor.
class tst_RunDemand : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void askedOfTheUserBeforeTheRun();
    void askedOfTheAuthorOnWhicheverPage();

private:
    EditorWorld world;
};

void tst_RunDemand::initTestCase()
{
    WbTheme::Instance()->Apply(WbTheme::Scheme::Light);
    world.Start();
}

void tst_RunDemand::init()
{
    world.SignIn();
    RpaEngineModule::Instance()->GetLogManager()->GetLogDataSource()->Initialize();
}

void tst_RunDemand::askedOfTheUserBeforeTheRun()
{
    RunPage page;
    page.resize(1280, 672);
    page.show();
    page.activateWindow();
    RpaAppData app;
    app.InitDefault();
    DemandCustomer(app);
    VersionServiceReleasedApp released;
    released.app.id = QStringLiteral("a");
    QVERIFY(page.ShowApp(released, app.ToJson()));
    auto* tool = Child<QPushButton>(page, "toolButton0");

    QTest::mouseClick(tool, Qt::LeftButton);

    auto* problem = Child<QLabel>(page, "paramProblem");
    QCOMPARE(problem->text(), QStringLiteral("请填写“客户”"));
    QTRY_VERIFY(problem->isVisible());
    QTRY_COMPARE(page.window()->focusWidget()->accessibleName(), QStringLiteral("客户"));
    QCOMPARE(RunLog(), QStringList()); // not even its packages were asked for

    QTest::keyClicks(page.window()->focusWidget(), QStringLiteral("A"));
    QVERIFY(!problem->isVisible());
    QTest::mouseClick(tool, Qt::LeftButton);

    QTRY_VERIFY2_WITH_TIMEOUT(HasRun(), qPrintable(RunLog().join(QLatin1Char('\n'))), longWaitMs);
}

void tst_RunDemand::askedOfTheAuthorOnWhicheverPage()
{
    const RobotExecuteInfo info = world.CreateApp();
    world.AddVersion(info, QStringLiteral("v1"), &DemandCustomer);
    EditorPage page;
    page.resize(1280, 720);
    page.show();
    page.activateWindow();
    AppRecord record;
    record.id = info.GetAppId();
    page.Open(record);
    QTRY_VERIFY_WITH_TIMEOUT(page.findChild<QPushButton*>(QStringLiteral("toolButton0")), longWaitMs);
    auto* tool = Child<QPushButton>(page, "toolButton0");
    QTRY_VERIFY(tool->isVisible());
    auto* process = Child<QWidget>(page, "pushButtonProcess");
    QTest::mouseClick(process, Qt::LeftButton);
    QTRY_VERIFY(!tool->isVisible());

    tool->click();

    QTRY_VERIFY(tool->isVisible());
    QTRY_VERIFY(Child<QLabel>(page, "paramProblem")->isVisible());
    QTRY_COMPARE(page.window()->focusWidget()->accessibleName(), QStringLiteral("客户"));
    QVERIFY(!HasStarted());

    QTest::keyClicks(page.window()->focusWidget(), QStringLiteral("A"));
    QTest::mouseClick(tool, Qt::LeftButton);

    QTRY_VERIFY2_WITH_TIMEOUT(HasRun(), qPrintable(RunLog().join(QLatin1Char('\n'))), longWaitMs);
}

RPA_TEST_MAIN(tst_RunDemand)

#include "tst_rundemand.moc"
