// SPDX-License-Identifier: Apache-2.0

#include "EditorPage.h"
#include "EditorWorld.h"
#include "PageFixture.h"
#include "TestApp.h"

#include <RpaAppData/RpaAppData.h>
#include <RpaAppData/RpaParamData.h>
#include <RpaAppData/RpaTableData.h>
#include <RpaAppData/RpaToolData.h>
#include <RpaAppData/RpaUIData.h>
#include <RpaAppData/RpaUIDataManager.h>
#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaProcess.h>
#include <WbBaseUI/WbTheme.h>

#include <QLabel>
#include <QPushButton>
#include <QTableView>
#include <QToolButton>
#include <QtTest>

namespace
{
constexpr int longWaitMs = 30000;

// A page whose tool appends a row with the customer's secret to a table of one row.
void AppendRows(RpaAppData& app)
{
    app.GetProcessDataManager()->GetProcess(0)->SetProgramText(QStringLiteral(
        "rpa.table_append(['secret ' + 'of a customer'])\nrpa.set_param('客户', 'some' + 'body')\n"));
    RpaUIData* const page = app.GetUIDataManager()->GetUIData(0);
    RpaTableColumn column;
    column.name = QStringLiteral("结果");
    page->GetTableData()->InsertColumn(-1, column);
    page->GetTableData()->AppendRow({QStringLiteral("sample")});
    RpaParamItem item;
    item.name = QStringLiteral("客户");
    page->GetParamData()->InsertItem(-1, item);
}
} // namespace

// What a run in the editor wrote: kept, taken back, or left alone and not saved.
class tst_ResultsBar : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void undecidedResultsAreNotSaved();
    void keptResultsAreSaved();
    void restoredResultsAreGone();
    void theTableIsLockedUntilTheAuthorDecides();
    void anotherEditorHasNoResults();

private:
    void Run();
    bool IsSaved(const QByteArray& text);
    QWidget* Bar() const { return Child<QWidget>(*page, "resultsBar"); }

    EditorWorld world;
    RobotExecuteInfo info;
    QString version;
    std::unique_ptr<EditorPage> page;
};

void tst_ResultsBar::initTestCase()
{
    WbTheme::Instance()->Apply(WbTheme::Scheme::Light);
    world.Start();
}

void tst_ResultsBar::init()
{
    world.SignIn();
    info = world.CreateApp(1);
    version = world.AddVersion(info, QStringLiteral("v1"), &AppendRows);
    page = std::make_unique<EditorPage>();
    page->resize(1280, 720);
    page->show();
    AppRecord record;
    record.id = info.GetAppId();
    record.kind = 1;
    page->Open(record);
    QTRY_VERIFY_WITH_TIMEOUT(page->findChild<QPushButton*>(QStringLiteral("toolButton0")), longWaitMs);
    QTRY_VERIFY(Child<QPushButton>(*page, "toolButton0")->isVisible());
}

void tst_ResultsBar::cleanup()
{
    page->Discard();
    page.reset();
}

void tst_ResultsBar::Run()
{
    QVERIFY(!Bar()->isVisible());
    QTest::mouseClick(Child<QPushButton>(*page, "toolButton0"), Qt::LeftButton);
    QTRY_VERIFY_WITH_TIMEOUT(Bar()->isVisible(), longWaitMs);
    QVERIFY(Child<QLabel>(*page, "labelResults")->text().contains(QStringLiteral("现有 2 行，运行前 1 行")));
    QVERIFY(Child<QLabel>(*page, "labelResults")->text().contains(QStringLiteral("1 个参数的值")));
}

// Saves, and asks the server.
bool tst_ResultsBar::IsSaved(const QByteArray& text)
{
    QTest::mouseClick(Child<QWidget>(*page, "pushButtonSave"), Qt::LeftButton);
    return world.GetContent(version).contains(text);
}

void tst_ResultsBar::undecidedResultsAreNotSaved()
{
    Run();

    QVERIFY(!IsSaved("secret of a customer"));

    QVERIFY(!world.GetContent(version).contains("somebody"));
    QVERIFY(world.GetContent(version).contains("sample"));
    QVERIFY(Bar()->isVisible());
}

void tst_ResultsBar::keptResultsAreSaved()
{
    Run();

    QTest::mouseClick(Child<QPushButton>(*page, "buttonKeepResults"), Qt::LeftButton);

    QVERIFY(!Bar()->isVisible());
    QTRY_VERIFY(IsSaved("secret of a customer"));
    QVERIFY(world.GetContent(version).contains("somebody"));
}

void tst_ResultsBar::restoredResultsAreGone()
{
    Run();

    QTest::mouseClick(Child<QPushButton>(*page, "buttonRestoreResults"), Qt::LeftButton);

    QVERIFY(!Bar()->isVisible());
    const QAbstractItemModel* table = Child<QTableView>(*page, "tableView")->model();
    QCOMPARE(table->rowCount(), 1);
    QCOMPARE(table->index(0, 0).data().toString(), QStringLiteral("sample"));
}

void tst_ResultsBar::theTableIsLockedUntilTheAuthorDecides()
{
    QVERIFY(Child<QToolButton>(*page, "tableAddRow")->isEnabled());

    Run();

    QTRY_VERIFY(!Child<QToolButton>(*page, "tableAddRow")->isEnabled());
    QTest::mouseClick(Child<QPushButton>(*page, "buttonRestoreResults"), Qt::LeftButton);
    QVERIFY(Child<QToolButton>(*page, "tableAddRow")->isEnabled());
}

void tst_ResultsBar::anotherEditorHasNoResults()
{
    Run();

    page->Discard();

    QVERIFY(!Bar()->isVisible());
}

RPA_TEST_MAIN(tst_ResultsBar)

#include "tst_resultsbar.moc"
