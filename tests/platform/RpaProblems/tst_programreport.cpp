// SPDX-License-Identifier: Apache-2.0

#include "ProgramReport_p.h"

#include <QtTest>

namespace
{
const QString program = QStringLiteral("import os\nprint(x)\n");

QVector<RpaProblem> Read(const QByteArray& json)
{
    return ProgramReport::Read(json, program, QStringLiteral("主流程")).value_or(QVector<RpaProblem>());
}
} // namespace

class ProgramReportTest : public QObject
{
    Q_OBJECT

private slots:
    void tellsWhatWasFound_data();
    void tellsWhatWasFound();
    void refusesWhatIsNoReport_data();
    void refusesWhatIsNoReport();
    void passesOverLinesThatThereAreNot();
    void takesAThousandAtMost();
    void cutsTexts();
    void aProblemKeepsItsIdOnAnotherLine();
};

void ProgramReportTest::tellsWhatWasFound_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QString>("rule");
    QTest::addColumn<QString>("message");
    const auto row = [](const char* name, const char* json, const char* rule, const char* message) {
        QTest::newRow(name) << QByteArray(json) << QString::fromUtf8(rule) << QString::fromUtf8(message);
    };
    row("syntax", R"({"syntax": [2, "bad"]})", "syntax-error", "语法错误：bad");
    row("name", R"({"found": [[2, "UndefinedName", ["x"]]]})", "undefined-name", "名称“x”没有定义");
    row("import", R"({"found": [[1, "UnusedImport", ["os"]]]})", "unused-import", "导入的“os”没有被使用");
    row("two words", R"({"found": [[1, "RedefinedWhileUnused", ["%2", "7"]]]})", "redefined-name",
        "“%2”重复定义，第 7 行的定义没有被使用");
    row("words missing", R"({"found": [[2, "UndefinedName", []]]})", "undefined-name", "名称“”没有定义");
    row("another kind", R"({"found": [[2, "Strange", ["x"]]]})", "program-mistake", "程序可能有误：Strange");
    row("word of another type", R"({"found": [[2, "UndefinedName", [1, "x"]]]})", "undefined-name",
        "名称“x”没有定义");
}

void ProgramReportTest::tellsWhatWasFound()
{
    QFETCH(QByteArray, json);
    const QVector<RpaProblem> problems = Read(json);

    QCOMPARE(problems.size(), 1);
    QTEST(problems.first().rule, "rule");
    QTEST(problems.first().message, "message");
    QVERIFY(problems.first().place.area == RpaProblemArea::Program);
}

void ProgramReportTest::refusesWhatIsNoReport_data()
{
    QTest::addColumn<QByteArray>("json");
    for (const char* json :
         {"", "[]", "{}", "{\"found\": 1}", "{\"found\": [1]}", "{\"found\": [[\"a\", \"b\", []]]}",
          "{\"found\": [[1, \"UndefinedName\", [], 4]]}", "{\"syntax\": [1]}", "{\"syntax\": [1, \"a\", 2]}",
          "{\"found\": []} x", "{\"found\": [[1, \"UndefinedName\", [\"x\"]]"})
        QTest::newRow(json) << QByteArray(json);
}

void ProgramReportTest::refusesWhatIsNoReport()
{
    QFETCH(QByteArray, json);

    QVERIFY(!ProgramReport::Read(json, program, QString()));
}

void ProgramReportTest::passesOverLinesThatThereAreNot()
{
    const QVector<RpaProblem> problems =
        Read(R"({"found": [[0, "UndefinedName", ["a"]], [-1, "UndefinedName", ["b"]],
                           [4, "UndefinedName", ["c"]], [3, "UndefinedName", ["d"]]]})");

    QCOMPARE(problems.size(), 1);
    QCOMPARE(problems.first().place.line, 3);
}

void ProgramReportTest::takesAThousandAtMost()
{
    QByteArray found;
    for (int i = 0; i < 1500; ++i)
        found +=
            (i > 0 ? "," : "") + QByteArray("[1, \"UndefinedName\", [\"x") + QByteArray::number(i) + "\"]]";

    QCOMPARE(Read("{\"found\": [" + found + "]}").size(), 1000);
}

void ProgramReportTest::cutsTexts()
{
    const QByteArray json =
        "{\"found\": [[1, \"" + QByteArray(5000, 'k') + "\", [\"" + QByteArray(5000, 'w') + "\"]]]}";

    const QVector<RpaProblem> problems = Read(json);

    QCOMPARE(problems.size(), 1);
    QVERIFY(problems.first().message.size() < 300);
    QVERIFY(problems.first().subject.size() < 500);
}

void ProgramReportTest::aProblemKeepsItsIdOnAnotherLine()
{
    const QString moved = QStringLiteral("\n\n") + program;
    const auto later =
        ProgramReport::Read(R"({"found": [[4, "UndefinedName", ["x"]]]})", moved, QStringLiteral("主流程"));

    QVERIFY(later);
    QCOMPARE(later->value(0).id, Read(R"({"found": [[2, "UndefinedName", ["x"]]]})").value(0).id);
}

QTEST_GUILESS_MAIN(ProgramReportTest)
#include "tst_programreport.moc"
