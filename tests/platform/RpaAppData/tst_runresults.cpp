// SPDX-License-Identifier: Apache-2.0

#include <RpaAppData/RpaAppData.h>
#include <RpaAppData/RpaParamData.h>
#include <RpaAppData/RpaTableData.h>
#include <RpaAppData/RpaUIData.h>
#include <RpaAppData/RpaUIDataManager.h>

#include <QSignalSpy>
#include <QtTest>

namespace
{
QString Text(const QVariant& value)
{
    return value.toString();
}
} // namespace

// What a run writes into the pages of an app is no part of the app until somebody keeps it.
class RunResults : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void valuesAreNotInTheJson();
    void rowsAreNotInTheJson();
    void keptResultsAreInTheJson();
    void restoredResultsAreGone();
    void aValueTypedOverAResultIsTheAuthors();
    void aColumnChangesInTheRowsOfBeforeToo();
    void aContentPutBackHasItsResultsApart();
    void aRunThatChangesNothingLeavesNoResults();
    void aLoadedAppHasNone();

private:
    RpaUIData* Page() const { return app->GetUIDataManager()->GetUIData(0); }
    RpaParamData* Params() const { return Page()->GetParamData(); }
    RpaTableData* Table() const { return Page()->GetTableData(); }
    // What whoever loads the app gets.
    RpaAppDataPtr Stored() const
    {
        auto stored = RpaAppDataPtr::create();
        stored->Parse(app->ToJson());
        return stored;
    }
    static RpaUIData* PageOf(const RpaAppDataPtr& other) { return other->GetUIDataManager()->GetUIData(0); }
    void RunWrites() const
    {
        Params()->SetResult(0, QStringLiteral("by the run"));
        Table()->WriteResult([this] { return Table()->SetCell(0, 0, QStringLiteral("changed")); });
        Table()->WriteResult([this] { return Table()->AppendRow({QStringLiteral("added")}) >= 0; });
    }

    RpaAppDataPtr app;
};

void RunResults::init()
{
    app = RpaAppDataPtr::create();
    app->InitDefault();
    RpaParamItem item;
    item.name = QStringLiteral("p");
    item.value = QStringLiteral("by the author");
    Params()->InsertItem(-1, item);
    RpaTableColumn column;
    column.name = QStringLiteral("c");
    Table()->InsertColumn(-1, column);
    Table()->AppendRow({QStringLiteral("first")});
}

void RunResults::valuesAreNotInTheJson()
{
    QSignalSpy changed(app->GetUIDataManager(), &RpaUIDataManager::SigResultsChanged);

    RunWrites();

    QCOMPARE(Text(Params()->GetItem(0).GetEffectiveValue()), QStringLiteral("by the run"));
    QCOMPARE(Text(PageOf(Stored())->GetParamData()->GetItem(0).value), QStringLiteral("by the author"));
    QCOMPARE(changed.size(), 2); // parameters, table
    QVERIFY(app->GetUIDataManager()->HasResults());
}

void RunResults::rowsAreNotInTheJson()
{
    RunWrites();

    QCOMPARE(Table()->GetRowCount(), 2);
    QCOMPARE(Table()->GetStoredRowCount(), 1);
    const RpaAppDataPtr stored = Stored();
    QCOMPARE(PageOf(stored)->GetTableData()->GetRowCount(), 1);
    QCOMPARE(Text(PageOf(stored)->GetTableData()->GetCell(0, 0)), QStringLiteral("first"));
}

void RunResults::keptResultsAreInTheJson()
{
    RunWrites();

    app->GetUIDataManager()->KeepResults();

    QVERIFY(!app->GetUIDataManager()->HasResults());
    const RpaAppDataPtr stored = Stored();
    QCOMPARE(Text(PageOf(stored)->GetParamData()->GetItem(0).value), QStringLiteral("by the run"));
    QCOMPARE(Text(PageOf(stored)->GetTableData()->GetCell(0, 0)), QStringLiteral("changed"));
    QCOMPARE(Text(PageOf(stored)->GetTableData()->GetCell(1, 0)), QStringLiteral("added"));
}

void RunResults::restoredResultsAreGone()
{
    const QByteArray before = app->ToJson();
    RunWrites();
    RunWrites();
    QSignalSpy edited(app->GetUIDataManager(), &RpaUIDataManager::SigChanged);

    app->GetUIDataManager()->RestoreResults();

    QVERIFY(!app->GetUIDataManager()->HasResults());
    QCOMPARE(Text(Params()->GetItem(0).value), QStringLiteral("by the author"));
    QCOMPARE(Table()->GetRowCount(), 1);
    QCOMPARE(Text(Table()->GetCell(0, 0)), QStringLiteral("first"));
    QCOMPARE(app->ToJson(), before);
    QCOMPARE(edited.size(), 0);
}

void RunResults::aValueTypedOverAResultIsTheAuthors()
{
    RunWrites();

    Params()->SetValue(0, QStringLiteral("typed"));

    QCOMPARE(Params()->GetResultCount(), 0);
    QCOMPARE(Text(PageOf(Stored())->GetParamData()->GetItem(0).value), QStringLiteral("typed"));
    RunWrites();
    Params()->SetValue(0, QStringLiteral("by the run")); // typed once more as it stands
    QCOMPARE(Text(PageOf(Stored())->GetParamData()->GetItem(0).value), QStringLiteral("by the run"));
}

void RunResults::aColumnChangesInTheRowsOfBeforeToo()
{
    RunWrites();
    RpaTableColumn column;
    column.name = QStringLiteral("front");

    Table()->InsertColumn(0, column);
    Table()->RestoreResults();

    QCOMPARE(Table()->GetRow(0).size(), 2);
    QVERIFY(!Table()->GetCell(0, 0).isValid());
    QCOMPARE(Text(Table()->GetCell(0, 1)), QStringLiteral("first"));
}

void RunResults::aContentPutBackHasItsResultsApart()
{
    RunWrites();
    const RpaTableData::Content content = Table()->GetContent();
    Table()->RemoveColumn(0);

    Table()->SetContent(content);

    QCOMPARE(Text(Table()->GetCell(1, 0)), QStringLiteral("added"));
    QCOMPARE(Text(PageOf(Stored())->GetTableData()->GetCell(0, 0)), QStringLiteral("first"));
}

void RunResults::aRunThatChangesNothingLeavesNoResults()
{
    Params()->SetResult(0, QStringLiteral("by the author"));
    Table()->WriteResult([this] { return Table()->SetCell(0, 0, QStringLiteral("first")); });
    QVERIFY(!Table()->WriteResult([this] { return Table()->SetCell(7, 0, QStringLiteral("x")); }));

    QVERIFY(!app->GetUIDataManager()->HasResults());
}

void RunResults::aLoadedAppHasNone()
{
    RunWrites();

    app->Parse(app->ToJson());

    QVERIFY(!app->GetUIDataManager()->HasResults());
    QCOMPARE(Table()->GetRowCount(), 1);
}

QTEST_APPLESS_MAIN(RunResults)

#include "tst_runresults.moc"
