// SPDX-License-Identifier: Apache-2.0

#include <RpaAppData/RpaParamData.h>
#include <RpaAppData/RpaTableData.h>
#include <RpaAppData/RpaToolData.h>
#include <WbFoundation/ContentLimits.h>
#include <WbFoundation/JsonReader.h>

#include <QDate>
#include <QSet>
#include <QSignalSpy>
#include <QtTest>

Q_DECLARE_METATYPE(RpaParamType)

namespace
{
RpaToolItem Tool(const QString& text)
{
    RpaToolItem item;
    item.text = text;
    return item;
}

RpaParamItem Param(const QString& name, RpaParamType type = RpaParamType::Text)
{
    RpaParamItem item;
    item.name = name;
    item.type = type;
    item.choices = QStringList{QStringLiteral("甲"), QStringLiteral("1")};
    return item;
}

RpaTableColumn Column(const QString& name, RpaColumnType type = RpaColumnType::Text)
{
    RpaTableColumn column;
    column.name = name;
    column.type = type;
    return column;
}
} // namespace

// The tool, parameter and table data of a page.
class RpaUIPartsTest : public QObject
{
    Q_OBJECT

private slots:
    void keepsToolsInOrderWithIdsOfTheirOwn();
    void changesToolsButNotTheirIds();
    void fitsValuesToParameters_data();
    void fitsValuesToParameters();
    void keepsWhatWasThereWhenATextIsTooLong();
    void givesTheDefaultWhileThereIsNoValue();
    void keepsParameterNamesUnique();
    void takesManyNamelessOnesWithoutSearchingForEach();
    void dropsValuesThatDoNotFitANewType();
    void announcesValuesApartFromDefinitions();
    void fitsCellsToColumns();
    void announcesAnyNumberOfCellsOnce();
    void insertsRowsAllOrNone();
    void keepsRowsAndColumnsTogether();
    void tellsNumbersApartToTheLastDigit();
    void emptiesCellsThatDoNotFitANewType();
    void refusesWhatLiesOutsideTheTable();
    void announcesTableChangesBeforeAndAfter();
};

void RpaUIPartsTest::keepsToolsInOrderWithIdsOfTheirOwn()
{
    RpaToolData tools;
    QCOMPARE(tools.InsertItem(-1, Tool(QStringLiteral("a"))), 0);
    QCOMPARE(tools.InsertItem(99, tools.GetItem(0)), 1);
    QCOMPARE(tools.InsertItem(0, Tool(QStringLiteral("b"))), 0);

    QVERIFY(tools.GetItem(1).id != tools.GetItem(2).id);
    QVERIFY(tools.MoveItem(0, 2));
    QCOMPARE(tools.GetItem(2).text, QStringLiteral("b"));
    QVERIFY(!tools.MoveItem(0, 3));
    QVERIFY(tools.RemoveItem(0));
    QVERIFY(!tools.RemoveItem(2));
    QCOMPARE(tools.GetCount(), 2);
}

void RpaUIPartsTest::changesToolsButNotTheirIds()
{
    RpaToolData tools;
    tools.InsertItem(-1, Tool(QStringLiteral("a")));
    const QString id = tools.GetItem(0).id;
    QSignalSpy changed(&tools, &RpaToolData::SigChanged);

    QVERIFY(tools.SetItem(0, Tool(QStringLiteral("b"))));
    QVERIFY(!tools.SetItem(0, Tool(QStringLiteral("b"))));
    QVERIFY(!tools.SetItem(1, Tool(QStringLiteral("b"))));

    QCOMPARE(tools.GetItem(0).id, id);
    QCOMPARE(tools.GetItem(0).text, QStringLiteral("b"));
    QCOMPARE(changed.count(), 1);
}

void RpaUIPartsTest::fitsValuesToParameters_data()
{
    QTest::addColumn<RpaParamType>("type");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<bool>("fits");
    QTest::addColumn<QVariant>("expected");

    const QVariant none;
    const auto text = [](const char* utf8) { return QVariant(QString::fromUtf8(utf8)); };
    QTest::newRow("text") << RpaParamType::Text << text("a") << true << text("a");
    QTest::newRow("number for text") << RpaParamType::Text << QVariant(2.5) << true << text("2.5");
    QTest::newRow("number") << RpaParamType::Number << QVariant(3) << true << QVariant(3.0);
    QTest::newRow("text of a number")
        << RpaParamType::Number << text(" 1,234.5 ") << true << QVariant(1234.5);
    QTest::newRow("no number") << RpaParamType::Number << text("abc") << false << none;
    QTest::newRow("infinite") << RpaParamType::Number << text("inf") << false << none;
    QTest::newRow("switch for a number") << RpaParamType::Number << QVariant(true) << false << none;
    QTest::newRow("date") << RpaParamType::Date << text("2024-02-29") << true << QVariant(QDate(2024, 2, 29));
    QTest::newRow("chinese date") << RpaParamType::Date << text("2024年2月9日") << true
                                  << QVariant(QDate(2024, 2, 9));
    QTest::newRow("date that never was") << RpaParamType::Date << text("2023-02-29") << false << none;
    QTest::newRow("choice") << RpaParamType::Choice << text("甲") << true << text("甲");
    QTest::newRow("number as choice") << RpaParamType::Choice << QVariant(1) << true << text("1");
    QTest::newRow("none of the choices") << RpaParamType::Choice << text("乙") << false << none;
    QTest::newRow("switch") << RpaParamType::Switch << text("是") << true << QVariant(true);
    QTest::newRow("number as switch") << RpaParamType::Switch << QVariant(0) << true << QVariant(false);
    QTest::newRow("no switch") << RpaParamType::Switch << text("也许") << false << none;
    QTest::newRow("list") << RpaParamType::Text << QVariant(QVariantList{1}) << false << none;
    QTest::newRow("no value") << RpaParamType::Number << none << true << none;
}

void RpaUIPartsTest::fitsValuesToParameters()
{
    QFETCH(RpaParamType, type);
    QFETCH(QVariant, value);
    QFETCH(bool, fits);
    QFETCH(QVariant, expected);
    RpaParamData params;
    params.InsertItem(-1, Param(QStringLiteral("p"), type));

    QCOMPARE(params.SetValue(0, value), fits);

    QCOMPARE(params.GetItem(0).value, expected);
    QCOMPARE(params.GetItem(0).value.isValid(), expected.isValid());
}

// Whoever writes it: a user, a run, a file that is imported.
void RpaUIPartsTest::keepsWhatWasThereWhenATextIsTooLong()
{
    const QString longest(ContentLimits::textBytes, QLatin1Char('x'));
    const QString tooLong = longest + QLatin1Char('y');
    RpaParamData params;
    params.InsertItem(-1, Param(QStringLiteral("甲")));
    RpaParamItem foreign = Param(QStringLiteral("乙"));
    foreign.foreignType = QStringLiteral("colour");
    params.InsertItem(-1, foreign);
    for (int index = 0; index < params.GetCount(); ++index) {
        QVERIFY(params.SetValue(index, longest));
        QVERIFY(!params.SetValue(index, tooLong));
        QVERIFY(params.GetItem(index).value.toString() == longest);
    }

    RpaTableData table;
    table.InsertColumn(-1, Column(QStringLiteral("列")));
    QCOMPARE(table.AppendRow({longest}), 0);
    QCOMPARE(table.AppendRow({tooLong}), -1);
    QVERIFY(!table.SetCell(0, 0, tooLong));
    QCOMPARE(table.GetRowCount(), 1);
    QVERIFY(table.GetCell(0, 0).toString() == longest);
}

void RpaUIPartsTest::givesTheDefaultWhileThereIsNoValue()
{
    RpaParamItem item = Param(QStringLiteral("p"), RpaParamType::Number);
    QCOMPARE(item.GetEffectiveValue(), QVariant(0.0));
    item.defaultValue = 5.0;
    QCOMPARE(item.GetEffectiveValue(), QVariant(5.0));
    item.value = 6.0;
    QCOMPARE(item.GetEffectiveValue(), QVariant(6.0));
}

void RpaUIPartsTest::keepsParameterNamesUnique()
{
    RpaParamData params;
    QCOMPARE(params.InsertItem(-1, Param(QStringLiteral("a"))), 0);
    QCOMPARE(params.InsertItem(-1, Param(QStringLiteral("a"))), -1);
    QCOMPARE(params.InsertItem(-1, Param(QStringLiteral("  "))), -1);
    QCOMPARE(params.InsertItem(-1, Param(QStringLiteral("A"))), 1);

    QVERIFY(!params.SetItem(1, Param(QStringLiteral("a"))));
    QVERIFY(params.SetItem(1, Param(QStringLiteral("参数1"))));
    QCOMPARE(params.MakeFreeName(QStringLiteral("参数")), QStringLiteral("参数2"));
    QCOMPARE(params.GetNames().join(QLatin1Char(' ')), QStringLiteral("a 参数1"));
}

// Searching all others for each of them would take minutes: a file could freeze the editor.
void RpaUIPartsTest::takesManyNamelessOnesWithoutSearchingForEach()
{
    constexpr int many = 20000;
    RpaParamData params;
    params.SetContent(QVector<RpaParamItem>(many, Param(QString())));
    QCOMPARE(params.GetCount(), many);
    QCOMPARE(params.GetItem(many - 1).name, QStringLiteral("参数20000"));

    RpaToolData tools;
    tools.SetContent(QVector<RpaToolItem>(many, Tool(QStringLiteral("同名"))));
    const QVector<RpaToolItem>& items = tools.GetItems();
    QSet<QString> ids;
    for (const RpaToolItem& item : items)
        ids.insert(item.id);
    QCOMPARE(ids.size(), many);

    RpaTableData table;
    const QByteArray json = "{\"columns\":[" + QByteArray("{},").repeated(many - 1) + "{}]}";
    JsonReader reader(json);
    const auto commit = table.ReadJson(reader);
    QVERIFY(reader.Finish());
    commit();
    QCOMPARE(table.GetColumnCount(), many);
    QCOMPARE(table.GetColumn(many - 1).name, QStringLiteral("列20000"));
}

void RpaUIPartsTest::dropsValuesThatDoNotFitANewType()
{
    RpaParamData params;
    RpaParamItem item = Param(QStringLiteral("p"));
    item.defaultValue = QStringLiteral("12");
    item.value = QStringLiteral("abc");
    params.InsertItem(-1, item);

    item.type = RpaParamType::Number;
    QVERIFY(params.SetItem(0, item));

    QCOMPARE(params.GetItem(0).defaultValue, QVariant(12.0));
    QVERIFY(!params.GetItem(0).value.isValid());
}

void RpaUIPartsTest::announcesValuesApartFromDefinitions()
{
    RpaParamData params;
    params.InsertItem(-1, Param(QStringLiteral("p")));
    QSignalSpy values(&params, &RpaParamData::SigValueChanged);
    QSignalSpy items(&params, &RpaParamData::SigItemsChanged);

    QVERIFY(params.SetValue(0, QStringLiteral("x")));
    QVERIFY(params.SetValue(0, QStringLiteral("x")));
    QVERIFY(!params.SetValue(1, QStringLiteral("x")));

    QCOMPARE(values.count(), 1);
    QCOMPARE(items.count(), 0);
}

void RpaUIPartsTest::fitsCellsToColumns()
{
    RpaTableData table;
    table.InsertColumn(-1, Column(QStringLiteral("n"), RpaColumnType::Number));
    table.InsertColumn(-1, Column(QStringLiteral("d"), RpaColumnType::Date));
    table.AppendRow({});

    QVERIFY(table.SetCell(0, 0, QStringLiteral("3.5")));
    QVERIFY(!table.SetCell(0, 0, QStringLiteral("x")));
    QVERIFY(table.SetCell(0, 1, QStringLiteral("2025/1/2")));

    QCOMPARE(table.GetCell(0, 0), QVariant(3.5));
    QCOMPARE(table.GetCell(0, 1), QVariant(QDate(2025, 1, 2)));
    QVERIFY(table.SetCell(0, 0, QString()));
    QVERIFY(!table.GetCell(0, 0).isValid());
}

void RpaUIPartsTest::announcesAnyNumberOfCellsOnce()
{
    RpaTableData table;
    table.InsertColumn(-1, Column(QStringLiteral("n"), RpaColumnType::Number));
    table.InsertColumn(-1, Column(QStringLiteral("t")));
    table.InsertRows(-1, {{1, QStringLiteral("a")}, {2, QStringLiteral("b")}, {3, QStringLiteral("c")}});
    QSignalSpy cells(&table, &RpaTableData::SigCellsChanged);
    QSignalSpy changed(&table, &RpaTableData::SigChanged);

    QVERIFY(table.SetCells({{2, 0, 30}, {0, 0, 1}, {1, 1, QStringLiteral("B")}}));
    QVERIFY(!table.SetCells({{0, 0, QStringLiteral("x")}, {0, 2, 1}, {0, 1, QStringLiteral("A")}}));

    QCOMPARE(cells.count(), 2);
    QCOMPARE(cells.at(0), QVariantList({1, 0, 2, 1}));
    QCOMPARE(changed.count(), 2);
    QCOMPARE(table.GetRow(0), QVariantList({1.0, QStringLiteral("A")}));
    QCOMPARE(table.GetRow(1), QVariantList({2.0, QStringLiteral("B")}));
    QCOMPARE(table.GetCell(2, 0), QVariant(30.0));
    QVERIFY(table.SetCells({{2, 0, 30}}));
    QCOMPARE(changed.count(), 2);
}

void RpaUIPartsTest::insertsRowsAllOrNone()
{
    RpaTableData table;
    table.InsertColumn(-1, Column(QStringLiteral("n"), RpaColumnType::Number));
    QSignalSpy changed(&table, &RpaTableData::SigChanged);

    QCOMPARE(table.InsertRows(-1, {{1}, {QStringLiteral("x")}}), -1);
    QCOMPARE(table.InsertRows(-1, {{1, 2}}), -1);
    QCOMPARE(table.InsertRows(-1, {}), -1);
    QCOMPARE(changed.count(), 0);
    QCOMPARE(table.InsertRows(-1, {{1}, {}}), 0);
    QCOMPARE(table.InsertRows(1, {{2}, {3}}), 1);
    QCOMPARE(table.AppendRow({4}), 4);

    QCOMPARE(table.GetRowCount(), 5);
    QCOMPARE(table.GetCell(2, 0), QVariant(3.0));
    QCOMPARE(table.GetRow(3).size(), 1);
}

void RpaUIPartsTest::keepsRowsAndColumnsTogether()
{
    RpaTableData table;
    table.InsertColumn(-1, Column(QStringLiteral("a")));
    table.AppendRow({QStringLiteral("1")});
    QCOMPARE(table.InsertColumn(0, Column(QStringLiteral("b"))), 0);
    QVERIFY(!table.GetCell(0, 0).isValid());
    QCOMPARE(table.GetCell(0, 1), QVariant(QStringLiteral("1")));

    QVERIFY(table.MoveColumn(0, 1));
    QCOMPARE(table.GetCell(0, 0), QVariant(QStringLiteral("1")));
    QVERIFY(table.RemoveColumn(1));
    QCOMPARE(table.GetRow(0), QVariantList{QStringLiteral("1")});
    QCOMPARE(table.InsertColumn(-1, Column(QStringLiteral("a"))), -1);
    QCOMPARE(table.InsertColumn(-1, Column(QString())), -1);
}

// Such as those of an order or a phone.
void RpaUIPartsTest::tellsNumbersApartToTheLastDigit()
{
    constexpr double one = 4001234567890;
    constexpr double next = 4001234567891;
    RpaTableData table;
    table.InsertColumn(-1, Column(QStringLiteral("a"), RpaColumnType::Number));
    table.AppendRow({one});
    QVERIFY(table.WriteResult([&table] { return table.SetCell(0, 0, next); }));
    QVERIFY(table.HasResults());
    QVERIFY(table.GetCell(0, 0).toDouble() > one);

    RpaParamData params;
    RpaParamItem item = Param(QStringLiteral("p"), RpaParamType::Number);
    item.defaultValue = one;
    params.InsertItem(-1, item);
    QVERIFY(params.SetValue(0, one));
    QVERIFY(params.SetValue(0, next));
    QVERIFY(params.GetItem(0).value.toDouble() > one);
    item = params.GetItem(0);
    item.defaultValue = next;
    QVERIFY(params.SetItem(0, item));
}

void RpaUIPartsTest::emptiesCellsThatDoNotFitANewType()
{
    RpaTableData table;
    table.InsertColumn(-1, Column(QStringLiteral("a")));
    table.InsertRows(-1, {{QStringLiteral("12")}, {QStringLiteral("x")}});

    QVERIFY(table.SetColumn(0, Column(QStringLiteral("a"), RpaColumnType::Number)));

    QCOMPARE(table.GetCell(0, 0), QVariant(12.0));
    QVERIFY(!table.GetCell(1, 0).isValid());
}

void RpaUIPartsTest::refusesWhatLiesOutsideTheTable()
{
    RpaTableData table;
    table.InsertColumn(-1, Column(QStringLiteral("a")));
    table.AppendRow({});

    QVERIFY(!table.SetCell(1, 0, 1));
    QVERIFY(!table.SetCell(0, 1, 1));
    QVERIFY(!table.SetCell(-1, 0, 1));
    QVERIFY(!table.GetCell(9, 9).isValid());
    QVERIFY(!table.RemoveRows(0, 2));
    QVERIFY(!table.RemoveRows(1, std::numeric_limits<int>::max()));
    QVERIFY(!table.RemoveRows(0, 0));
    QVERIFY(!table.RemoveColumn(1));
    QVERIFY(!table.SetColumn(0, table.GetColumn(0)));
    table.ClearRows();
    QCOMPARE(table.GetRowCount(), 0);
    table.ClearRows();
}

void RpaUIPartsTest::announcesTableChangesBeforeAndAfter()
{
    RpaTableData table;
    table.InsertColumn(-1, Column(QStringLiteral("a")));
    QStringList story;
    connect(&table, &RpaTableData::SigAboutToInsertRows, this, [&](int first, int last) {
        story << QStringLiteral("+%1-%2:%3").arg(first).arg(last).arg(table.GetRowCount());
    });
    connect(&table, &RpaTableData::SigRowsInserted, this, [&](int first, int last) {
        story << QStringLiteral("=%1-%2:%3").arg(first).arg(last).arg(table.GetRowCount());
    });
    connect(&table, &RpaTableData::SigAboutToRemoveRows, this, [&](int first, int last) {
        story << QStringLiteral("-%1-%2:%3").arg(first).arg(last).arg(table.GetRowCount());
    });
    connect(&table, &RpaTableData::SigRowsRemoved, this, [&](int first, int last) {
        story << QStringLiteral("=%1-%2:%3").arg(first).arg(last).arg(table.GetRowCount());
    });

    table.InsertRows(0, {{}, {}});
    table.RemoveRows(1, 1);

    QCOMPARE(story.join(QLatin1Char(' ')), QStringLiteral("+0-1:0 =0-1:2 -1-1:2 =1-1:1"));
}

QTEST_GUILESS_MAIN(RpaUIPartsTest)
#include "tst_rpauiparts.moc"
