// SPDX-License-Identifier: Apache-2.0

// No app yet, and apps without pages.
#include "ModalDriver.h"
#include "TestApp.h"
#include "UIDesignFixture.h"

#include <RpaAppData/RpaTableData.h>
#include <RpaAppData/RpaUIData.h>
#include <RpaAppData/RpaUIDataManager.h>
#include <RpaAppTool/IAppToolWidget.h>

#include <QLabel>
#include <QPushButton>
#include <QToolButton>
#include <QtTest>

class TestRpaAppUIDesignWidgetEmpty : public UIDesignFixture
{
    Q_OBJECT

private slots:
    void leavesTheTabsAloneForAnAppWithoutPages();
    void saysWhatAPageWithoutContentsWaitsFor();
    void asksForNothingBeforeAnAppIsThere();
    void letsTheTabsOfAnotherAppBePressedForAnAppWithoutPages();
    void showsTheFirstPageThatIsAdded();
    void showsTheFirstPageThatIsAddedAfterAnotherApp();
};

void TestRpaAppUIDesignWidgetEmpty::leavesTheTabsAloneForAnAppWithoutPages()
{
    // given
    const QStringList before = Tabs();
    const RpaAppDataPtr empty = MakeApp(0);

    // when
    page->SetRpaAppData(empty);

    // then
    QCOMPARE(Tabs(), before);
    QCOMPARE(empty->GetUIDataManager()->GetIndexActive(), -1);
}

void TestRpaAppUIDesignWidgetEmpty::saysWhatAPageWithoutContentsWaitsFor()
{
    // given
    const auto* place = page->findChild<QWidget*>(QStringLiteral("widgetTable"));
    const auto* hint = place->findChild<QLabel*>(QStringLiteral("emptyHint"), Qt::FindDirectChildrenOnly);

    // then
    QVERIFY(hint && hint->isVisible());
    QVERIFY(hint->text().contains(Text("添加参数")));
    QTRY_COMPARE(hint->geometry(), place->rect());

    // when
    RpaTableColumn column;
    column.name = Text("列");
    Pages()->GetUIData(0)->GetTableData()->InsertColumn(-1, column);

    // then
    QTRY_VERIFY(!hint->isVisible());
}

void TestRpaAppUIDesignWidgetEmpty::asksForNothingBeforeAnAppIsThere()
{
    // given
    ShowPageWithoutApp();
    ModalDriver modals;

    // when
    PressAdd();

    // then
    QCOMPARE(modals.GetSeenCount(), 0);
    QCOMPARE(Tabs(), QStringList());
}

void TestRpaAppUIDesignWidgetEmpty::letsTheTabsOfAnotherAppBePressedForAnAppWithoutPages()
{
    // given
    const RpaAppDataPtr empty = MakeApp(0);
    page->SetRpaAppData(empty);

    // when
    PressTab(2);
    PressTab(1);

    // then
    QCOMPARE(empty->GetUIDataManager()->GetIndexActive(), -1);
    QCOMPARE(ToolInPanel(), Text("工具0"));
    QVERIFY(!empty->GetModified());
}

void TestRpaAppUIDesignWidgetEmpty::showsTheFirstPageThatIsAdded()
{
    // given
    ShowPageWithoutApp();
    const RpaAppDataPtr empty = MakeApp(0);
    page->SetRpaAppData(empty);

    // when
    AddPage(Text("登记"));

    // then
    QCOMPARE(Tabs(), QStringList{Text("登记")});
    QCOMPARE(ToolInPanel(), Text("开始"));
    const auto* run = page->findChild<IAppToolWidget*>()->findChild<QPushButton*>();
    QVERIFY(run);
    QCOMPARE(run->text(), Text("开始"));
    QVERIFY(empty->GetModified());
}

// The tabs of the app before were still there.
void TestRpaAppUIDesignWidgetEmpty::showsTheFirstPageThatIsAddedAfterAnotherApp()
{
    // given
    const RpaAppDataPtr empty = MakeApp(0);
    page->SetRpaAppData(empty);
    AddPage(Text("登记"));
    QCOMPARE(Tabs(), QStringList{Text("登记")});
    empty->SetModified(false);
    app->SetModified(false);

    // when
    auto* panel = page->findChild<QWidget*>(QStringLiteral("widgetToolEditor"));
    QTest::mouseClick(panel->findChild<QToolButton*>(QStringLiteral("recordAdd")), Qt::LeftButton);

    // then
    QCOMPARE(empty->GetUIDataManager()->GetUIData(0)->GetToolData()->GetCount(), 2);
    QVERIFY(empty->GetModified());
    QVERIFY(!app->GetModified());
}

RPA_TEST_MAIN(TestRpaAppUIDesignWidgetEmpty)
#include "tst_rpaappuidesignwidget_empty.moc"
