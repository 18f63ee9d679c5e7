// SPDX-License-Identifier: Apache-2.0

#include <RpaProcessData/RpaCondition.h>

#include <QtTest>

class RpaConditionTest : public QObject
{
    Q_OBJECT

private slots:
    void readsRows_data();
    void readsRows();
    void saysWhyRowsCannotShowIt_data();
    void saysWhyRowsCannotShowIt();
    void writesEachComparison_data();
    void writesEachComparison();
    void keepsRowsThatWereNotTouched();
    void movesRowsWithTheirWords();
    void findsTheIncompleteRow();
    void readsAsManyRowsAsAreShown();
};

namespace
{
// Each row as "left comparison right", alternatives begin with "|".
QString Shown(const RpaCondition& condition)
{
    QStringList lines;
    for (const RpaConditionRow& row : condition.GetRows()) {
        lines << (row.isOr ? QStringLiteral("|") : QString()) + row.left.ToPython() + QLatin1Char(' ') +
                     QString::number(int(row.comparison)) + QLatin1Char(' ') + row.right.ToPython();
    }
    return lines.join(QStringLiteral("; "));
}

QString With(const char* left, RpaComparison comparison, const char* right)
{
    return QString::fromUtf8(left) + QLatin1Char(' ') + QString::number(int(comparison)) + QLatin1Char(' ') +
           QString::fromUtf8(right);
}
} // namespace

void RpaConditionTest::readsRows_data()
{
    QTest::addColumn<QString>("python");
    QTest::addColumn<QString>("rows");
    const auto row = [](const char* python, const QString& rows) {
        QTest::newRow(python) << QString::fromUtf8(python) << rows;
    };
    using C = RpaComparison;
    row("", With("", C::Equal, ""));
    row("数量 > 3", With("数量", C::Greater, "3"));
    row("=数量>=3", With("数量", C::GreaterOrEqual, "3"));
    row("数量 < 3 and 状态 == '完成'",
        With("数量", C::Less, "3") + QStringLiteral("; ") + With("状态", C::Equal, "\"完成\""));
    row("a != 1 or (b <= 2)",
        With("a", C::NotEqual, "1") + QStringLiteral("; |") + With("b", C::LessOrEqual, "2"));
    row("a[1] == len(b)", With("a[1]", C::Equal, "len(b)"));
    row("\"元\" in 金额", With("金额", C::Contains, "\"元\""));
    row("\"元\" not in 金额", With("金额", C::ContainsNot, "\"元\""));
    row("a in b", With("a", C::IsIn, "b"));
    row("a not in b", With("a", C::IsNotIn, "b"));
    row("a.startswith('x')", With("a", C::StartsWith, "\"x\""));
    row("str(a + b).endswith(c)", With("a + b", C::EndsWith, "c"));
    row("a in (None, '', [], {})", With("a", C::IsEmpty, ""));
    row("a not in (None, \"\", [], {})", With("a", C::IsNotEmpty, ""));
    row("a is None", With("a", C::IsNone, ""));
    row("a is not None", With("a", C::IsNotNone, ""));
    row("确认", With("确认", C::Holds, ""));
    row("not 确认", With("确认", C::HoldsNot, ""));
    row("(a if b else c)", With("(a if b else c)", C::Holds, ""));
    row("a > 1 and  == ", With("a", C::Greater, "1") + QStringLiteral("; ") + With("", C::Equal, ""));
}

void RpaConditionTest::readsRows()
{
    QFETCH(QString, python);
    QFETCH(QString, rows);

    const auto condition = RpaCondition::Read(python);

    QVERIFY(condition);
    QCOMPARE(Shown(*condition), rows);
    QCOMPARE(condition->ToPython(), python);
}

void RpaConditionTest::saysWhyRowsCannotShowIt_data()
{
    QTest::addColumn<QString>("python");
    QTest::addColumn<QString>("reason");
    const auto row = [](const char* python, const char* reason) {
        QTest::newRow(python) << QString::fromUtf8(python) << QString::fromUtf8(reason);
    };
    row("a and (b or c)", "分组");
    row("1 < x < 3", "连续比较");
    row("not (a and b)", "否定");
    row("not a == b", "否定");
    row("a == not b", "否定");
    row("a is b", "没有的比较");
    row("a if b else c", "写法");
    row("lambda: a", "写法");
    row("a, b", "写法");
    row("(a", "括号");
    row("a == \"b", "引号");
    const QString rows = QStringLiteral("a and ").repeated(RpaCondition::mostRows);
    QTest::newRow("one row too many") << rows + QLatin1Char('a') << QStringLiteral("超过 50 行");
    QTest::newRow("brackets without end")
        << QString(RpaCondition::mostCharacters, QLatin1Char('(')) + QLatin1Char('a')
        << QStringLiteral("太长");
}

void RpaConditionTest::saysWhyRowsCannotShowIt()
{
    QFETCH(QString, python);
    QFETCH(QString, reason);

    QString why;
    QVERIFY(!RpaCondition::Read(python, &why));
    QVERIFY2(why.contains(reason), qPrintable(why));
}

void RpaConditionTest::writesEachComparison_data()
{
    QTest::addColumn<int>("comparison");
    QTest::addColumn<QString>("python");
    const QStringList written{QStringLiteral("a == \"b\""),
                              QStringLiteral("a != \"b\""),
                              QStringLiteral("a > \"b\""),
                              QStringLiteral("a >= \"b\""),
                              QStringLiteral("a < \"b\""),
                              QStringLiteral("a <= \"b\""),
                              QStringLiteral("\"b\" in a"),
                              QStringLiteral("\"b\" not in a"),
                              QStringLiteral("a in \"b\""),
                              QStringLiteral("a not in \"b\""),
                              QStringLiteral("str(a).startswith(\"b\")"),
                              QStringLiteral("str(a).endswith(\"b\")"),
                              QStringLiteral("a in (None, \"\", [], {})"),
                              QStringLiteral("a not in (None, \"\", [], {})"),
                              QStringLiteral("a is None"),
                              QStringLiteral("a is not None"),
                              QStringLiteral("a"),
                              QStringLiteral("not a")};
    for (int i = 0; i < written.size(); ++i)
        QTest::newRow(qPrintable(written.at(i))) << i << written.at(i);
}

void RpaConditionTest::writesEachComparison()
{
    QFETCH(int, comparison);
    QFETCH(QString, python);
    auto condition = RpaCondition::Read(QString());

    condition->SetRows({{false, RpaValue::Code(QStringLiteral("a")), RpaComparison(comparison),
                         RpaValue::Text(QStringLiteral("b"))}});

    QCOMPARE(condition->ToPython(), python);
}

void RpaConditionTest::keepsRowsThatWereNotTouched()
{
    auto condition = RpaCondition::Read(QStringLiteral("(a>1)  and b=='x' or  c"));
    auto rows = condition->GetRows();

    rows[1].right = RpaValue::Text(QStringLiteral("y"));
    condition->SetRows(rows);
    QCOMPARE(condition->ToPython(), QStringLiteral("(a>1) and b == \"y\" or c"));

    rows[1].right = RpaValue::Text(QStringLiteral("x"));
    condition->SetRows(rows);
    QCOMPARE(condition->ToPython(), QStringLiteral("(a>1)  and b=='x' or  c"));
}

void RpaConditionTest::movesRowsWithTheirWords()
{
    auto condition = RpaCondition::Read(QStringLiteral("a<1 or b>2"));
    auto rows = condition->GetRows();

    std::swap(rows[0], rows[1]);
    rows[0].isOr = false;
    rows[1].isOr = true;
    condition->SetRows(rows);

    QCOMPARE(condition->ToPython(), QStringLiteral("b>2 or a<1"));
}

void RpaConditionTest::findsTheIncompleteRow()
{
    QCOMPARE(RpaCondition::Read(QStringLiteral("a == 1 and b"))->FindIncomplete(), -1);
    QCOMPARE(RpaCondition::Read(QStringLiteral("a == 1 and  == 2"))->FindIncomplete(), 1);
    QCOMPARE(RpaCondition::Read(QStringLiteral("a == "))->FindIncomplete(), 0);
}

void RpaConditionTest::readsAsManyRowsAsAreShown()
{
    const QString rows = QStringLiteral("a and ").repeated(RpaCondition::mostRows - 1) + QLatin1Char('a');

    QCOMPARE(RpaCondition::Read(rows)->GetRows().size(), RpaCondition::mostRows);
}

QTEST_GUILESS_MAIN(RpaConditionTest)

#include "tst_rpacondition.moc"
