// SPDX-License-Identifier: Apache-2.0

#include "AddUIWidget.h"
#include "ModalDriver.h"
#include "RpaAppUIDesignWidget.h"
#include "TestApp.h"

#include <OxBase/DpiTool.h>
#include <RpaAppData/RpaParamData.h>
#include <RpaAppData/RpaTableData.h>
#include <RpaAppData/RpaUIData.h>
#include <RpaAppData/RpaUIDataManager.h>
#include <RpaAppTool/IAppLogWidget.h>
#include <RpaAppTool/IAppParamWidget.h>
#include <RpaAppTool/IAppTableWidget.h>
#include <RpaAppTool/IAppToolWidget.h>
#include <RpaEngineCore/IProcessLifeCycle.h>
#include <RpaEngineCore/IRpaLogManager.h>
#include <RpaEngineCore/RpaProcessLifeCycleManager.h>
#include <RpaEngineModule/RpaEngineModule.h>
#include <RpaEngineModule/RpaProcessRelatedUIControler.h>
#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaProcess.h>
#include <WbBaseUI/RpaTabBar.h>

#include <QAbstractItemView>
#include <QLayout>
#include <QPushButton>
#include <QSignalSpy>
#include <QSplitter>
#include <QTabBar>
#include <QToolButton>
#include <QtTest>

#include <memory>

namespace
{

QString Text(const char* utf8)
{
    return QString::fromUtf8(utf8);
}

int CountOfLifeCycles()
{
    int count = 0;
    RpaProcessLifeCycleManager::Instance()->ForEach([&count](IProcessLifeCycle*) { ++count; });
    return count;
}

} // namespace

// What the panels and the page view show, and how the page is put together.
class TestRpaAppUIDesignWidgetParts : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void showsTheDataOfThePickedPageEverywhere();
    void showsTheDataOfTheNextAppEverywhere();
    void marksTheAppThatIsShown_data();
    void marksTheAppThatIsShown();
    void hidesTheParametersOfAPageWithoutAny();
    void hearsOfTheProcessesFromTheEngine();
    void isControlledWhileAProcessRuns_data();
    void isControlledWhileAProcessRuns();
    void showsTheEnginesLog();
    void forwardsTheStatementOfALogLine();
    void forwardsTheLineOfALogLine();
    void givesANewPageTheFirstOfSeveralProcesses();
    void leavesNoDialogBehind();
    void fillsEachHostWithItsWidget_data();
    void fillsEachHostWithItsWidget();
    void sharesItsRoom();
    void isNotScaledAnyMoreOnceItIsGone();

private:
    // Two pages; everything on them carries the mark and the number of the page.
    static RpaAppDataPtr MakeApp(const QString& mark);
    QWidget* Find(const char* name) const { return page->findChild<QWidget*>(QLatin1String(name)); }
    QString FirstRecordOf(const char* panel) const;
    QStringList Shown() const;
    static QStringList Expected(const QString& mark);

    std::unique_ptr<RpaAppUIDesignWidget> page;
    RpaAppDataPtr app;
};

void TestRpaAppUIDesignWidgetParts::init()
{
    page = std::make_unique<RpaAppUIDesignWidget>();
    page->show();
    app = MakeApp(Text("甲"));
    page->SetRpaAppData(app);
}

void TestRpaAppUIDesignWidgetParts::cleanup()
{
    page.reset();
    DpiTool::SetScale(1.0);
}

RpaAppDataPtr TestRpaAppUIDesignWidgetParts::MakeApp(const QString& mark)
{
    auto made = RpaAppDataPtr::create();
    made->InitDefault();
    RpaUIDataManager* pages = made->GetUIDataManager();
    pages->Clear();
    for (int i = 0; i < 2; ++i) {
        const QString name = mark + QString::number(i);
        RpaToolItem tool;
        tool.text = Text("工具") + name;
        pages->AddUIData(Text("界面") + name, tool);
        RpaParamItem param;
        param.name = Text("参数") + name;
        pages->GetUIData(i)->GetParamData()->InsertItem(-1, param);
        RpaTableColumn column;
        column.name = Text("列") + name;
        pages->GetUIData(i)->GetTableData()->InsertColumn(-1, column);
    }
    made->SetModified(false);
    return made;
}

QString TestRpaAppUIDesignWidgetParts::FirstRecordOf(const char* panel) const
{
    const auto* records = Find(panel)->findChild<QAbstractItemView*>(QStringLiteral("recordView"));
    return records->model()->index(0, 0).data().toString();
}

QStringList TestRpaAppUIDesignWidgetParts::Shown() const
{
    return {FirstRecordOf("widgetToolEditor"),
            FirstRecordOf("widgetParamEditor"),
            FirstRecordOf("widgetTableEditor"),
            page->findChild<IAppToolWidget*>()->findChild<QPushButton*>()->text(),
            page->findChild<IAppParamWidget*>()->GetParamNames().join(QLatin1Char(' ')),
            page->findChild<IAppTableWidget*>()->GetColumnNames().join(QLatin1Char(' '))};
}

QStringList TestRpaAppUIDesignWidgetParts::Expected(const QString& mark)
{
    const QStringList inPanels{Text("工具") + mark, Text("参数") + mark, Text("列") + mark};
    return inPanels + inPanels;
}

void TestRpaAppUIDesignWidgetParts::showsTheDataOfThePickedPageEverywhere()
{
    auto* tabs = Find("widgetTabBar")->findChild<QTabBar*>();
    QCOMPARE(Shown(), Expected(Text("甲0")));

    QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(1).center());
    QCOMPARE(Shown(), Expected(Text("甲1")));

    QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(0).center());
    QCOMPARE(Shown(), Expected(Text("甲0")));
}

void TestRpaAppUIDesignWidgetParts::showsTheDataOfTheNextAppEverywhere()
{
    page->SetRpaAppData(MakeApp(Text("乙")));

    QCOMPARE(Shown(), Expected(Text("乙0")));
}

void TestRpaAppUIDesignWidgetParts::marksTheAppThatIsShown_data()
{
    QTest::addColumn<QByteArray>("panel");
    for (const char* panel : {"widgetToolEditor", "widgetParamEditor", "widgetTableEditor"})
        QTest::newRow(panel) << QByteArray(panel);
}

void TestRpaAppUIDesignWidgetParts::marksTheAppThatIsShown()
{
    QFETCH(QByteArray, panel);

    // given
    const RpaAppDataPtr next = MakeApp(Text("乙"));
    page->SetRpaAppData(next);

    // when
    QTest::mouseClick(Find(panel)->findChild<QToolButton*>(QStringLiteral("recordAdd")), Qt::LeftButton);

    // then
    QVERIFY(next->GetModified());
    QVERIFY(!app->GetModified());
}

void TestRpaAppUIDesignWidgetParts::hidesTheParametersOfAPageWithoutAny()
{
    // given
    RpaUIData* first = app->GetUIDataManager()->GetUIData(0);
    const auto* params = page->findChild<IAppParamWidget*>();
    const auto* table = page->findChild<IAppTableWidget*>();
    const auto* tools = page->findChild<IAppToolWidget*>();
    QVERIFY(params->isVisible() && table->isVisible() && tools->isVisible());

    // when, then
    first->GetParamData()->RemoveItem(0);
    QVERIFY(params->isHidden());
    first->GetTableData()->RemoveColumn(0);
    QVERIFY(table->isHidden());
    first->GetToolData()->RemoveItem(0);
    QVERIFY(tools->isHidden());
}

void TestRpaAppUIDesignWidgetParts::hearsOfTheProcessesFromTheEngine()
{
    const auto* addRow = page->findChild<QToolButton*>(QStringLiteral("tableAddRow"));
    auto* engine = RpaProcessLifeCycleManager::Instance();
    QVERIFY(addRow->isEnabled());

    engine->ForEach([](IProcessLifeCycle* listener) { listener->ProcessStart(Text("主流程")); });
    QVERIFY(!addRow->isEnabled());
    engine->ForEach([](IProcessLifeCycle* listener) { listener->ProcessFinish(Text("主流程")); });
    QVERIFY(addRow->isEnabled());

    const int before = CountOfLifeCycles();
    page.reset();
    QVERIFY(CountOfLifeCycles() < before);
    engine->ForEach([](IProcessLifeCycle* listener) { listener->ProcessStart(Text("主流程")); });
}

void TestRpaAppUIDesignWidgetParts::isControlledWhileAProcessRuns_data()
{
    QTest::addColumn<QByteArray>("part");
    QTest::newRow("panels") << QByteArray("editorWidget");
    QTest::newRow("tabs") << QByteArray("widgetTabBar");
}

void TestRpaAppUIDesignWidgetParts::isControlledWhileAProcessRuns()
{
    QFETCH(QByteArray, part);

    RpaProcessRelatedUIControler::Instance()->SetRunning(true);
    const bool isEnabled = Find(part)->isEnabled();
    RpaProcessRelatedUIControler::Instance()->SetRunning(false);

    QVERIFY(!isEnabled);
    QVERIFY(Find(part)->isEnabled());
}

void TestRpaAppUIDesignWidgetParts::showsTheEnginesLog()
{
    const auto* lines = page->findChild<QAbstractItemView*>(QStringLiteral("logView"))->model();
    RpaEngineModule::Instance()->GetLogManager()->GetLogDataSource()->Initialize();
    QCOMPARE(lines->rowCount(), 0);

    RpaEngineModule::Instance()->GetLogManager()->Append(RpaLogLevel::Info, Text("第一行"));

    QTRY_COMPARE(lines->rowCount(), 1);
}

void TestRpaAppUIDesignWidgetParts::forwardsTheStatementOfALogLine()
{
    QSignalSpy shown(page.get(), &RpaAppUIDesignWidget::SigShowStatement);

    emit page->findChild<IAppLogWidget*>()->SigShowStatement(QStringLiteral("s1"));

    QCOMPARE(shown.size(), 1);
    QCOMPARE(shown.constFirst().constFirst().toString(), QStringLiteral("s1"));
}

void TestRpaAppUIDesignWidgetParts::forwardsTheLineOfALogLine()
{
    QSignalSpy shown(page.get(), &RpaAppUIDesignWidget::SigShowLine);

    emit page->findChild<IAppLogWidget*>()->SigShowLine(7);

    QCOMPARE(shown.size(), 1);
    QCOMPARE(shown.constFirst().constFirst().toInt(), 7);
}

void TestRpaAppUIDesignWidgetParts::givesANewPageTheFirstOfSeveralProcesses()
{
    // given
    app->GetProcessDataManager()->AddProcess(Text("第二个流程"));
    QCOMPARE(app->GetProcessDataManager()->GetProcessNames().size(), 2);
    ModalDriver modals;
    modals.ThenIn<AddUIWidget>([](AddUIWidget* dialog) {
        dialog->SetName(Text("新界面"));
        ModalDriver::Press(dialog, Text("确定"));
    });

    // when
    QTest::mouseClick(Find("widgetTabBar")->findChild<QToolButton*>(QStringLiteral("buttonAddTab")),
                      Qt::LeftButton);

    // then
    const RpaToolItem tool = app->GetUIDataManager()->GetUIData(2)->GetToolData()->GetItem(0);
    QCOMPARE(tool.processName, app->GetProcessDataManager()->GetProcessNames().constFirst());
}

void TestRpaAppUIDesignWidgetParts::leavesNoDialogBehind()
{
    // given
    auto* bar = page->findChild<RpaTabBar*>();
    QPointer<QWidget> added;
    QPointer<QWidget> renamed;
    ModalDriver modals;
    modals.Then([&added](QWidget* dialog) {
        added = dialog;
        ModalDriver::Reject(dialog);
    });
    modals.Then([&renamed](QWidget* dialog) {
        renamed = dialog;
        ModalDriver::Reject(dialog);
    });

    // when
    emit bar->SigAddTab();
    emit bar->SigRenameTab(0);
    QVERIFY(modals.GetPendingCount() == 0);

    // then
    QTRY_VERIFY(!added);
    QTRY_VERIFY(!renamed);
}

void TestRpaAppUIDesignWidgetParts::fillsEachHostWithItsWidget_data()
{
    QTest::addColumn<QByteArray>("host");
    QTest::addColumn<int>("side");
    for (const char* host : {"widgetTool", "widgetParam", "widgetTable"})
        QTest::newRow(host) << QByteArray(host) << 0;
    QTest::newRow("widgetLog") << QByteArray("widgetLog") << 4;
}

void TestRpaAppUIDesignWidgetParts::fillsEachHostWithItsWidget()
{
    QFETCH(QByteArray, host);
    QFETCH(int, side);

    const QLayout* layout = Find(host)->layout();

    QVERIFY(layout);
    QCOMPARE(layout->count(), 1);
    QCOMPARE(layout->contentsMargins(), QMargins(side, 0, side, 0));
    QCOMPARE(layout->spacing(), 0);
}

void TestRpaAppUIDesignWidgetParts::sharesItsRoom()
{
    const auto share = [](const QSplitter* splitter) {
        return splitter->sizes().at(0) / qreal(splitter->sizes().at(1));
    };
    const auto* panelsAndPage = page->findChild<QSplitter*>(QStringLiteral("splitter"));
    const auto* pageAndLog = page->findChild<QSplitter*>(QStringLiteral("splitterRight"));

    for (const QSize& size : {QSize(1600, 1200), QSize(2200, 2000)}) {
        page->resize(size);
        QTRY_VERIFY(qAbs(share(panelsAndPage) - 0.75) < 0.15);
        QTRY_VERIFY(qAbs(share(pageAndLog) - 4.0) < 0.6);
    }
}

void TestRpaAppUIDesignWidgetParts::isNotScaledAnyMoreOnceItIsGone()
{
    page.reset();

    DpiTool::SetScale(2.0);

    QCOMPARE(DpiTool::GetScale(), 2.0);
}

RPA_TEST_MAIN(TestRpaAppUIDesignWidgetParts)

#include "tst_rpaappuidesignwidget_parts.moc"
