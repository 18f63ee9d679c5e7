// SPDX-License-Identifier: Apache-2.0

#include "PanelForm.h"

#include <RpaAppData/RpaPageEdits.h>
#include <RpaAppData/RpaParamData.h>
#include <RpaAppData/RpaTableData.h>
#include <RpaAppData/RpaToolData.h>
#include <RpaAppTool/AppParamEditorWidget.h>
#include <RpaAppTool/AppTableEditorWidget.h>
#include <RpaAppTool/AppToolEditorWidget.h>
#include <WbBaseUI/WbEditHistory.h>

#include <QSignalSpy>
#include <QTimer>

// What an author does in the panels of a page and takes back again.
class PageEdits : public QObject, private PanelForm
{
    Q_OBJECT

private slots:
    void init() { Start(); }

    void whatIsTakenBackIsNoEdit();
    void whatWasSavedMeanwhileIsEditedByTakingItBack();
    void aValueThatIsEnteredBackIsNoEdit();
    void aCellThatIsEnteredBackIsNoEdit();
    void rowsAndColumnsThatAreTakenBackAreNoEdit();
    void aTableThatHoldsSomethingElseStaysAnEdit_data();
    void aTableThatHoldsSomethingElseStaysAnEdit();
    void aColumnOfAnotherNameStaysAnEdit();
    void whatARunWroteIsNotComparedUntilItIsKept();

private:
    // A column of numbers and two rows, in a panel that has seen no edit of them yet.
    RpaTableData* FillTable(AppTableEditorWidget& panel)
    {
        RpaTableData* const table = Page()->GetTableData();
        RpaTableColumn amount;
        amount.name = QStringLiteral("金额");
        amount.type = RpaColumnType::Number;
        if (table->InsertColumn(-1, amount) != 0 || table->InsertRows(-1, {{80}, {4001234567890.0}}) != 0)
            qFatal("no table");
        Bind(panel, table);
        return table;
    }
    bool IsCompared() { return !app->findChild<RpaPageEdits*>()->findChild<QTimer*>()->isActive(); }
};

void PageEdits::whatIsTakenBackIsNoEdit()
{
    AppToolEditorWidget tools;
    Bind(tools, Page()->GetToolData());
    AppParamEditorWidget params;
    Bind(params, Page()->GetParamData());
    Click(tools, "recordAdd");
    Click(params, "recordAdd");
    QVERIFY(app->GetModified());
    QSignalSpy marks(app.data(), &RpaAppData::SigModifiedChanged);

    WbEditHistory::Instance()->Undo();
    QCOMPARE(Page()->GetParamData()->GetCount(), 0);
    QTRY_VERIFY(app->GetModified());
    WbEditHistory::Instance()->Undo();

    QTRY_VERIFY(!app->GetModified());
    QCOMPARE(marks.size(), 1);
    WbEditHistory::Instance()->Redo();
    QVERIFY(app->GetModified());
}

void PageEdits::whatWasSavedMeanwhileIsEditedByTakingItBack()
{
    AppToolEditorWidget panel;
    Bind(panel, Page()->GetToolData());
    Click(panel, "recordAdd");
    app->SetModified(false);
    QSignalSpy marks(app.data(), &RpaAppData::SigModifiedChanged);

    WbEditHistory::Instance()->Undo();
    QVERIFY(app->GetModified());
    const int before = Page()->GetToolData()->GetCount();
    WbEditHistory::Instance()->Redo();
    QCOMPARE(Page()->GetToolData()->GetCount(), before + 1);

    QTRY_VERIFY(!app->GetModified());
    QCOMPARE(marks.size(), 2);
}

void PageEdits::aValueThatIsEnteredBackIsNoEdit()
{
    AppParamEditorWidget panel;
    RpaParamItem item;
    item.name = QStringLiteral("rate");
    QVERIFY(Page()->GetParamData()->InsertItem(-1, item) >= 0);
    QVERIFY(Page()->GetParamData()->SetValue(0, QStringLiteral("80")));
    Bind(panel, Page()->GetParamData());

    QVERIFY(Page()->GetParamData()->SetValue(0, QStringLiteral("90")));
    QVERIFY(app->GetModified());
    QVERIFY(Page()->GetParamData()->SetValue(0, QStringLiteral("80")));

    QTRY_VERIFY(!app->GetModified());
}

void PageEdits::aCellThatIsEnteredBackIsNoEdit()
{
    AppTableEditorWidget panel;
    RpaTableData* const table = FillTable(panel);

    QVERIFY(table->SetCell(0, 0, 90));
    QVERIFY(app->GetModified());
    QVERIFY(table->SetCell(0, 0, QStringLiteral("80")));

    QTRY_VERIFY(!app->GetModified());
}

void PageEdits::rowsAndColumnsThatAreTakenBackAreNoEdit()
{
    AppTableEditorWidget panel;
    RpaTableData* const table = FillTable(panel);
    QVERIFY(table->RemoveRows(0, 1));
    QCOMPARE(table->InsertRows(0, {{80}}), 0);
    QVERIFY(app->GetModified());
    QTRY_VERIFY(!app->GetModified());
    Click(panel, "recordAdd");
    QCOMPARE(table->GetColumnCount(), 2);
    QTRY_VERIFY(IsCompared());
    QVERIFY(app->GetModified());

    WbEditHistory::Instance()->Undo();

    QTRY_VERIFY(!app->GetModified());
}

void PageEdits::aTableThatHoldsSomethingElseStaysAnEdit_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<QVariant>("value");
    QTest::newRow("another number") << 0 << QVariant(81);
    QTest::newRow("a cleared cell") << 0 << QVariant();
    QTest::newRow("the last of many digits") << 1 << QVariant(4001234567891.0);
}

void PageEdits::aTableThatHoldsSomethingElseStaysAnEdit()
{
    QFETCH(int, row);
    QFETCH(QVariant, value);
    AppTableEditorWidget panel;
    RpaTableData* const table = FillTable(panel);

    QVERIFY(table->SetCell(row, 0, value));

    QVERIFY(!IsCompared());
    QTRY_VERIFY(IsCompared());
    QVERIFY(app->GetModified());
}

void PageEdits::aColumnOfAnotherNameStaysAnEdit()
{
    AppTableEditorWidget panel;
    RpaTableData* const table = FillTable(panel);
    RpaTableColumn column = table->GetColumn(0);
    column.name = QStringLiteral("税额");

    QVERIFY(table->SetColumn(0, column));

    QTRY_VERIFY(IsCompared());
    QVERIFY(app->GetModified());
}

void PageEdits::whatARunWroteIsNotComparedUntilItIsKept()
{
    AppTableEditorWidget panel;
    RpaTableData* const table = FillTable(panel);
    AppToolEditorWidget tools;
    Bind(tools, Page()->GetToolData());
    QVERIFY(table->WriteResult([table] { return table->AppendRow({1}) >= 0; }));
    Click(tools, "recordAdd");

    WbEditHistory::Instance()->Undo();

    QTRY_VERIFY(!app->GetModified());
    table->KeepResults();
    QTRY_VERIFY(IsCompared());
    QVERIFY(app->GetModified());
}

QTEST_MAIN(PageEdits)
#include "tst_pageedits.moc"
