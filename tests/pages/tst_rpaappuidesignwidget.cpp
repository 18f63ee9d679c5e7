// SPDX-License-Identifier: Apache-2.0

#include "AddUIWidget.h"
#include "ModalDriver.h"
#include "TestApp.h"
#include "UIDesignFixture.h"

#include <OxBase/DpiTool.h>
#include <RpaAppData/RpaParamData.h>
#include <RpaAppData/RpaTableData.h>
#include <RpaAppData/RpaUIData.h>
#include <RpaAppData/RpaUIDataManager.h>
#include <RpaAppTool/IAppToolWidget.h>
#include <RpaEngineCore/IAppParamEngine.h>
#include <RpaEngineCore/IAppTableEngine.h>
#include <RpaEngineModule/RpaProcessRelatedUIControler.h>
#include <RpaProcessData/ProcessDataManager.h>
#include <WbBaseUI/RpaTabBar.h>

#include <QPushButton>
#include <QSignalSpy>
#include <QSplitter>
#include <QTabBar>
#include <QTableView>
#include <QToolButton>
#include <QVBoxLayout>
#include <QtTest>

class TestRpaAppUIDesignWidget : public UIDesignFixture
{
    Q_OBJECT

private slots:
    void doesNotActivateTheActivePageAgain();
    void keepsTheAppUnmodifiedWhenAPageKeepsItsName();
    void addsAPageWithItsDefaultTool();
    void followsTheTabBarAfterDeletingAndMoving_data();
    void followsTheTabBarAfterDeletingAndMoving();
    void showsTheSpaceWhenAllPanelsAreCollapsed();

    void activatesTheFirstPageOfANewApp();
    void activatesThePageOfThePickedTab();
    void renamesAPage();
    void swapsThePagesAfterTheirTabs();
    void changesNothingWhenADialogIsCancelled();
    void survivesItsEndWhileADialogIsOpen_data();
    void survivesItsEndWhileADialogIsOpen();
    void ignoresADialogOfAnAppThatIsGone_data();
    void ignoresADialogOfAnAppThatIsGone();
    void isControlledWhileAProcessRuns();
    void offersItsWidgetsToTheEngine();
    void locksTheTableWhileAProcessRuns();
    void forwardsRunAndStopOfItsTools();
    void marksTheAppWhenAPanelChangesIt();
    void keepsItsMeasuresAtEveryScale();
    void keepsToolsAndParametersTogetherWhileThereIsNoTable();

private:
    static void AddDialogs()
    {
        QTest::addColumn<bool>("isRenaming");
        QTest::newRow("of a new page") << false;
        QTest::newRow("of a new name") << true;
    }
    void OpenDialog(bool isRenaming) const
    {
        if (isRenaming)
            emit bar->SigRenameTab(1);
        else
            emit bar->SigAddTab();
    }
};

void TestRpaAppUIDesignWidget::doesNotActivateTheActivePageAgain()
{
    // given a tool that the author has picked in the panel
    auto* records = page->findChild<QWidget*>(QStringLiteral("widgetToolEditor"))->findChild<QTableView*>();
    QTest::mouseClick(records->viewport(), Qt::LeftButton, {},
                      records->visualRect(records->model()->index(0, 0)).center());
    QVERIFY(records->selectionModel()->hasSelection());
    QSignalSpy filled(records->model(), &QAbstractItemModel::modelReset);
    QSignalSpy activated(Pages(), &RpaUIDataManager::SigIndexActiveChanged);

    // when
    emit bar->SigTabChanged(0);

    // then
    QCOMPARE(filled.size(), 0);
    QCOMPARE(activated.size(), 0);
    QCOMPARE(Pages()->GetIndexActive(), 0);
    QVERIFY(records->selectionModel()->hasSelection());
}

void TestRpaAppUIDesignWidget::keepsTheAppUnmodifiedWhenAPageKeepsItsName()
{
    // given
    ModalDriver modals;
    modals.ThenIn<AddUIWidget>([](AddUIWidget* dialog) {
        QCOMPARE(dialog->windowTitle(), Text("重命名界面"));
        QCOMPARE(dialog->GetName(), Text("界面1"));
        ModalDriver::Press(dialog, Text("确定"));
    });

    // when
    emit bar->SigRenameTab(1);

    // then
    QVERIFY(!app->GetModified());
    QCOMPARE(Pages()->GetUIName(1), Text("界面1"));
}

void TestRpaAppUIDesignWidget::addsAPageWithItsDefaultTool()
{
    // given
    ModalDriver modals;
    modals.ThenIn<AddUIWidget>([](AddUIWidget* dialog) {
        QCOMPARE(dialog->windowTitle(), Text("添加界面"));
        QVERIFY(!dialog->parentWidget());
        dialog->SetName(Text(" 新界面 "));
        ModalDriver::Press(dialog, Text("确定"));
    });

    // when
    emit bar->SigAddTab();

    // then
    QCOMPARE(Pages()->GetCount(), 4);
    QCOMPARE(Pages()->GetUIName(3), Text("新界面"));
    QCOMPARE(Tabs().constLast(), Text("新界面"));
    const auto tools = Pages()->GetUIData(3)->GetToolData()->GetItems();
    QCOMPARE(tools.size(), 1);
    QCOMPARE(tools.constFirst().text, Text("开始"));
    QCOMPARE(tools.constFirst().processName, app->GetProcessDataManager()->GetProcessNameFirst());
    QVERIFY(!tools.constFirst().processName.isEmpty());
    QVERIFY(app->GetModified());
}

void TestRpaAppUIDesignWidget::followsTheTabBarAfterDeletingAndMoving_data()
{
    QTest::addColumn<int>("active");
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    for (int active = 0; active < 3; ++active) {
        for (int from = 0; from < 3; ++from) {
            QTest::addRow("delete %d while %d is active", from, active) << active << from << -1;
            for (int to = 0; to < 3; ++to)
                QTest::addRow("move %d to %d while %d is active", from, to, active) << active << from << to;
        }
    }
}

void TestRpaAppUIDesignWidget::followsTheTabBarAfterDeletingAndMoving()
{
    QFETCH(int, active);
    QFETCH(int, from);
    QFETCH(int, to);

    // given
    auto* tabs = bar->findChild<QTabBar*>();
    tabs->setCurrentIndex(active);
    QCOMPARE(Pages()->GetIndexActive(), active);

    // when
    if (to < 0)
        emit bar->SigDeleteTab(from);
    else
        emit bar->SigTabMoved(from, to);

    // then
    QCOMPARE(Pages()->GetIndexActive(), bar->GetCurrentIndex());
    QStringList names;
    Pages()->GetAllUIName(names);
    QCOMPARE(Tabs(), names);
    QVERIFY(app->GetModified());
    const QString tool = Pages()->GetUIData(Pages()->GetIndexActive())->GetToolData()->GetItem(0).text;
    const auto* records =
        page->findChild<QWidget*>(QStringLiteral("widgetToolEditor"))->findChild<QTableView*>();
    QCOMPARE(records->model()->index(0, 0).data().toString(), tool);
}

void TestRpaAppUIDesignWidget::showsTheSpaceWhenAllPanelsAreCollapsed()
{
    // given
    auto* space = page->findChild<QWidget*>(QStringLiteral("space_widget"));
    QVERIFY(space->isHidden());
    QList<QToolButton*> headers;
    for (const char* name : {"widgetToolEditor", "widgetParamEditor", "widgetTableEditor"})
        headers.append(page->findChild<QWidget*>(QLatin1String(name))->findChild<QToolButton*>());

    // when, then
    headers.at(0)->click();
    QVERIFY(space->isHidden());
    headers.at(1)->click();
    QVERIFY(space->isHidden());
    headers.at(2)->click();
    QVERIFY(space->isVisible());
    headers.at(1)->click();
    QVERIFY(space->isHidden());
}

void TestRpaAppUIDesignWidget::activatesTheFirstPageOfANewApp()
{
    // given
    const RpaAppDataPtr next = MakeApp(2);
    next->GetUIDataManager()->SetIndexActive(1);

    // when
    page->SetRpaAppData(next);

    // then
    QCOMPARE(next->GetUIDataManager()->GetIndexActive(), 0);
    QCOMPARE(Tabs(), QStringList({Text("界面0"), Text("界面1")}));
    QCOMPARE(bar->GetCurrentIndex(), 0);
    QVERIFY(!next->GetModified());
}

void TestRpaAppUIDesignWidget::activatesThePageOfThePickedTab()
{
    bar->findChild<QTabBar*>()->setCurrentIndex(2);

    QCOMPARE(Pages()->GetIndexActive(), 2);
    QVERIFY(!app->GetModified());
}

void TestRpaAppUIDesignWidget::renamesAPage()
{
    // given
    ModalDriver modals;
    modals.ThenIn<AddUIWidget>([](AddUIWidget* dialog) {
        dialog->SetName(Text("登记"));
        ModalDriver::Press(dialog, Text("确定"));
    });

    // when
    emit bar->SigRenameTab(1);

    // then
    QCOMPARE(Pages()->GetUIName(1), Text("登记"));
    QCOMPARE(Tabs().at(1), Text("登记"));
    QVERIFY(app->GetModified());
}

void TestRpaAppUIDesignWidget::changesNothingWhenADialogIsCancelled()
{
    // given
    const auto giveUp = [](AddUIWidget* dialog) {
        dialog->SetName(Text("登记"));
        ModalDriver::Press(dialog, Text("取消"));
    };
    ModalDriver modals;
    modals.ThenIn<AddUIWidget>(giveUp);
    modals.ThenIn<AddUIWidget>(giveUp);

    // when
    emit bar->SigAddTab();
    emit bar->SigRenameTab(1);

    // then
    const QStringList before{Text("界面0"), Text("界面1"), Text("界面2")};
    QStringList names;
    Pages()->GetAllUIName(names);
    QCOMPARE(names, before);
    QCOMPARE(Tabs(), before);
    QVERIFY(!app->GetModified());
}

void TestRpaAppUIDesignWidget::swapsThePagesAfterTheirTabs()
{
    // given
    QStringList tabsThen;
    connect(Pages(), &RpaUIDataManager::SigUISwapped, page.get(), [&] { tabsThen = Tabs(); });

    // when
    emit bar->SigTabMoved(0, 2);

    // then
    QCOMPARE(tabsThen, QStringList({Text("界面2"), Text("界面1"), Text("界面0")}));
    QCOMPARE(Tabs(), tabsThen);
}

void TestRpaAppUIDesignWidget::survivesItsEndWhileADialogIsOpen_data()
{
    AddDialogs();
}

void TestRpaAppUIDesignWidget::survivesItsEndWhileADialogIsOpen()
{
    QFETCH(bool, isRenaming);

    // given
    ModalDriver modals;
    modals.ThenIn<AddUIWidget>([this](AddUIWidget* dialog) {
        page.reset();
        app.reset();
        dialog->SetName(Text("新界面"));
        ModalDriver::Press(dialog, Text("确定"));
    });

    // when
    OpenDialog(isRenaming);

    // then
    QVERIFY(!page);
}

void TestRpaAppUIDesignWidget::ignoresADialogOfAnAppThatIsGone_data()
{
    AddDialogs();
}

void TestRpaAppUIDesignWidget::ignoresADialogOfAnAppThatIsGone()
{
    QFETCH(bool, isRenaming);

    // given
    const RpaAppDataPtr next = MakeApp(2);
    ModalDriver modals;
    modals.ThenIn<AddUIWidget>([this, next](AddUIWidget* dialog) {
        page->SetRpaAppData(next);
        app.reset();
        dialog->SetName(Text("新界面"));
        ModalDriver::Press(dialog, Text("确定"));
    });

    // when
    OpenDialog(isRenaming);

    // then
    QStringList names;
    next->GetUIDataManager()->GetAllUIName(names);
    QCOMPARE(names, QStringList({Text("界面0"), Text("界面1")}));
    QCOMPARE(Tabs(), names);
    QVERIFY(!next->GetModified());
}

void TestRpaAppUIDesignWidget::isControlledWhileAProcessRuns()
{
    auto* editor = page->findChild<QWidget*>(QStringLiteral("editorWidget"));

    RpaProcessRelatedUIControler::Instance()->SetRunning(true);
    const bool enabledThen = editor->isEnabled() || bar->isEnabled();
    RpaProcessRelatedUIControler::Instance()->SetRunning(false);

    QVERIFY(!enabledThen);
    QVERIFY(editor->isEnabled());
    QVERIFY(bar->isEnabled());
}

void TestRpaAppUIDesignWidget::offersItsWidgetsToTheEngine()
{
    RpaParamItem param;
    param.name = Text("数量");
    Pages()->GetUIData(0)->GetParamData()->InsertItem(-1, param);
    RpaTableColumn column;
    column.name = Text("金额");
    Pages()->GetUIData(0)->GetTableData()->InsertColumn(-1, column);

    QCOMPARE(page->GetAppParamEngine()->GetParamNames(), QStringList{Text("数量")});
    QCOMPARE(page->GetAppTableEngine()->GetColumnNames(), QStringList{Text("金额")});
}

void TestRpaAppUIDesignWidget::locksTheTableWhileAProcessRuns()
{
    RpaTableColumn column;
    column.name = Text("金额");
    Pages()->GetUIData(0)->GetTableData()->InsertColumn(-1, column);
    auto* addRow = page->findChild<QToolButton*>(QStringLiteral("tableAddRow"));
    QVERIFY(addRow->isEnabled());

    page->ProcessStart(Text("主流程"));
    QVERIFY(!addRow->isEnabled());
    page->ProcessFinish(Text("主流程"));

    QVERIFY(addRow->isEnabled());
}

void TestRpaAppUIDesignWidget::forwardsRunAndStopOfItsTools()
{
    auto* tools = page->findChild<IAppToolWidget*>();
    QSignalSpy runs(page.get(), &RpaAppUIDesignWidget::SigRunProcess);
    QSignalSpy stops(page.get(), &RpaAppUIDesignWidget::SigStopProcess);

    emit tools->SigRunProcess(Text("甲"));
    emit tools->SigStopProcess(Text("乙"));

    QCOMPARE(runs.size(), 1);
    QCOMPARE(runs.first().first().toString(), Text("甲"));
    QCOMPARE(stops.size(), 1);
    QCOMPARE(stops.first().first().toString(), Text("乙"));
}

void TestRpaAppUIDesignWidget::marksTheAppWhenAPanelChangesIt()
{
    QVERIFY(!app->GetModified());

    page->findChild<QWidget*>(QStringLiteral("widgetParamEditor"))
        ->findChild<QToolButton*>(QStringLiteral("recordAdd"))
        ->click();

    QCOMPARE(Pages()->GetUIData(0)->GetParamData()->GetCount(), 1);
    QVERIFY(app->GetModified());
}

void TestRpaAppUIDesignWidget::keepsItsMeasuresAtEveryScale()
{
    const auto layout = [this](const char* name) {
        return page->findChild<QVBoxLayout*>(QLatin1String(name));
    };
    QCOMPARE(layout("verticalLayoutRoot")->spacing(), 0);
    QCOMPARE(layout("verticalLayoutRoot")->contentsMargins(), QMargins());
    QCOMPARE(page->findChild<QSplitter*>(QStringLiteral("splitter"))->handleWidth(), 4);
    QCOMPARE(page->findChild<QSplitter*>(QStringLiteral("splitterRight"))->handleWidth(), 4);

    for (qreal scale : {1.0, 2.0}) {
        DpiTool::SetScale(scale);
        const int side = DpiTool::ScaleDefault(4);
        QCOMPARE(layout("verticalLayout")->contentsMargins(), QMargins(side, 0, side, 0));
        QCOMPARE(layout("verticalLayout")->spacing(), DpiTool::ScaleDefault(8));
        QCOMPARE(layout("verticalLayout_2")->spacing(), DpiTool::ScaleDefault(10));
        QCOMPARE(page->findChild<QWidget*>(QStringLiteral("widgetLog"))->layout()->contentsMargins(),
                 QMargins(side, 0, side, 0));
    }
}

void TestRpaAppUIDesignWidget::keepsToolsAndParametersTogetherWhileThereIsNoTable()
{
    // given
    RpaParamItem param;
    param.name = Text("金额");

    // when
    Pages()->GetUIData(0)->GetParamData()->InsertItem(-1, param);
    page->resize(1200, 700);

    // then
    const auto* tools = page->findChild<QWidget*>(QStringLiteral("widgetTool"));
    const auto* params = page->findChild<QWidget*>(QStringLiteral("widgetParam"));
    QTRY_COMPARE(tools->height(), tools->sizeHint().height());
    QTRY_COMPARE(params->height(), params->sizeHint().height());
    QVERIFY(params->y() - tools->geometry().bottom() < 20);
}

RPA_TEST_MAIN(TestRpaAppUIDesignWidget)

#include "tst_rpaappuidesignwidget.moc"
