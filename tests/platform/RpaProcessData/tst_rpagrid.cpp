// SPDX-License-Identifier: Apache-2.0

#include <RpaProcessData/RpaGrid.h>

#include <QtTest>

Q_DECLARE_METATYPE(RpaArgumentForm)

class RpaGridTest : public QObject
{
    Q_OBJECT

private slots:
    void readsCells_data();
    void readsCells();
    void leavesTheRestToTheExpression_data();
    void leavesTheRestToTheExpression();
    void writesChangedCells_data();
    void writesChangedCells();
};

namespace
{
QString Shown(const RpaGrid& grid)
{
    QStringList rows;
    for (const RpaGrid::Row& row : grid.GetRows()) {
        QStringList cells;
        for (const RpaValue& cell : row)
            cells << cell.ToPython();
        rows << cells.join(QLatin1Char('|'));
    }
    return rows.join(QLatin1Char('/'));
}
} // namespace

void RpaGridTest::readsCells_data()
{
    QTest::addColumn<RpaArgumentForm>("form");
    QTest::addColumn<QString>("python");
    QTest::addColumn<QString>("cells");
    using Form = RpaArgumentForm;
    const auto row = [](const char* name, Form form, const char* python, const char* cells) {
        QTest::newRow(name) << form << QString::fromUtf8(python) << QString::fromUtf8(cells);
    };
    row("nothing", Form::List, "", "");
    row("none", Form::Table, "None", "");
    row("empty list", Form::List, "[]", "");
    row("list", Form::List, "[ 姓名, '甲',3 ]", "姓名/\"甲\"/3");
    row("items of any kind", Form::Columns, "[人[0], float(人[1]), a + b,]", "人[0]/float(人[1])/a + b");
    row("items without brackets", Form::List, "姓名, \"的订单\"", "姓名/\"的订单\"");
    row("table", Form::Table, "[[1, \"a\"], [x]]", "1|\"a\"/x");
    row("dictionary", Form::Dictionary, "{\"k\": v, 2: [1, 2]}", "\"k\"|v/2|[1, 2]");
}

void RpaGridTest::readsCells()
{
    QFETCH(RpaArgumentForm, form);
    QFETCH(QString, python);
    QFETCH(QString, cells);

    const auto grid = RpaGrid::Read(form, python);

    QVERIFY(grid);
    QCOMPARE(Shown(*grid), cells);
    QCOMPARE(grid->ToPython(), python);
}

void RpaGridTest::leavesTheRestToTheExpression_data()
{
    QTest::addColumn<RpaArgumentForm>("form");
    QTest::addColumn<QString>("python");
    using Form = RpaArgumentForm;
    QTest::newRow("variable") << Form::List << QStringLiteral("行");
    QTest::newRow("comprehension") << Form::List << QStringLiteral("[x for x in y]");
    QTest::newRow("unpacked") << Form::List << QStringLiteral("[*x, 1]");
    QTest::newRow("unclosed") << Form::List << QStringLiteral("[1, 2");
    QTest::newRow("sum of lists") << Form::List << QStringLiteral("[1] + [2]");
    QTest::newRow("table with a variable row") << Form::Table << QStringLiteral("[[1], 行]");
    const QString many = QStringLiteral("1, ").repeated(RpaGrid::mostRows);
    QTest::newRow("one row too many") << Form::List << QLatin1Char('[') + many + QStringLiteral("1]");
    const QString wide = QStringLiteral("1, ").repeated(RpaGrid::mostCells);
    QTest::newRow("one cell too many") << Form::Table << QStringLiteral("[[") + wide + QStringLiteral("1]]");
    QTest::newRow("too long") << Form::List
                              << QStringLiteral("[\"") + QString(RpaGrid::mostCharacters, QLatin1Char('x')) +
                                     QStringLiteral("\"]");
    QTest::newRow("set") << Form::Dictionary << QStringLiteral("{1, 2}");
    QTest::newRow("dictionary for columns") << Form::Columns << QStringLiteral("{\"姓名\": a}");
}

void RpaGridTest::leavesTheRestToTheExpression()
{
    QFETCH(RpaArgumentForm, form);
    QFETCH(QString, python);

    QString reason;
    QVERIFY(!RpaGrid::Read(form, python, &reason));
    QVERIFY(!reason.isEmpty());
}

void RpaGridTest::writesChangedCells_data()
{
    QTest::addColumn<RpaArgumentForm>("form");
    QTest::addColumn<QString>("python");
    using Form = RpaArgumentForm;
    QTest::newRow("list") << Form::List << QStringLiteral("[1, \"甲\", \"\"]");
    QTest::newRow("columns") << Form::Columns << QStringLiteral("[1, \"甲\", \"\"]");
    QTest::newRow("table") << Form::Table << QStringLiteral("[[1, v], [\"甲\", v], [\"\", v]]");
    QTest::newRow("dictionary") << Form::Dictionary << QStringLiteral("{1: v, \"甲\": v}");
}

void RpaGridTest::writesChangedCells()
{
    QFETCH(RpaArgumentForm, form);
    QFETCH(QString, python);
    const RpaValue v = RpaValue::Code(QStringLiteral("v"));
    const bool two = form == RpaArgumentForm::Table || form == RpaArgumentForm::Dictionary;
    auto grid = RpaGrid::Read(form, QString());

    QVector<RpaGrid::Row> rows{
        {RpaValue::Number(QStringLiteral("1"))}, {RpaValue::Text(QStringLiteral("甲"))}, {RpaValue()}};
    for (RpaGrid::Row& row : rows)
        row += two ? RpaGrid::Row{v} : RpaGrid::Row();
    grid->SetRows(rows);

    QCOMPARE(grid->ToPython(), python);
}

QTEST_GUILESS_MAIN(RpaGridTest)

#include "tst_rpagrid.moc"
