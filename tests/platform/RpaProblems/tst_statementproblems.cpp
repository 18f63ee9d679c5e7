// SPDX-License-Identifier: Apache-2.0

#include "ProblemRules.h"

using namespace ProblemRules;
using namespace ProblemSamples;

// What is odd about single statements and their variables.
class StatementProblemsTest : public QObject
{
    Q_OBJECT

private slots:
    void arguments_data();
    void arguments() { Compare(); }
    void variables_data();
    void variables() { Compare(); }
    void fixes_data();
    void fixes() { CompareFix(); }
    void endsEarlyWhenNobodyWaits();
};

void StatementProblemsTest::arguments_data()
{
    AddColumns();
    Row("unknown argument",
        Main({Step("log", {{QStringLiteral("text"), QStringLiteral("x")}, {QStringLiteral("colour"), {}}})}),
        "unknown-argument");
    Row("known arguments", Main({Log("x")}), "");
    Row("unknown argument of a disabled step",
        Main({Disabled(Step("log", {{QStringLiteral("colour"), QString()}}))}), "");
}

void StatementProblemsTest::variables_data()
{
    AddColumns();
    Row("variable never read", Main({Set("a")}), "unused-variable?");
    Row("variable never read, twice", Main({Set("a"), Set("a")}), "unused-variable?");
    Row("variable that is read", Main({Set("a"), Log("=a")}), "");
    Row("variable read by a disabled step", Main({Set("a"), Disabled(Log("=a"))}), "unused-variable?");
    Row("variable read elsewhere",
        Visual({Process("主流程", {Set("a"), Run("子")}), Process("子", {Log("=a")})}), "");
    Row("variable that only changes itself",
        Main({Set("a"), Step("variable.increase", {{QStringLiteral("name"), QStringLiteral("a")}})}), "");
    Row("item of a loop",
        Main({Step("loop.count", {{QStringLiteral("times"), QStringLiteral("2")}}, QStringLiteral("i"))}),
        "");
    Row("variable that is not wanted", Main({Set("_a")}), "");
}

void StatementProblemsTest::fixes_data()
{
    AddFixColumns();
    FixRow("an unused variable", Main({Set("a")}), RpaProblemFix::None, "a");
    FixRow(
        "an argument",
        Main({Step("log", {{QStringLiteral("text"), QStringLiteral("x")}, {QStringLiteral("colour"), {}}})}),
        RpaProblemFix::RemoveArgument, "colour");
}

void StatementProblemsTest::endsEarlyWhenNobodyWaits()
{
    const RpaAppCopy app = Main({Log("=a"), Set("b")});
    QCOMPARE(RulesOf(app), QStringLiteral("undefined-variable! unused-variable?"));
    int asked = 0;

    QCOMPARE(RulesOf(RpaProblemFinder::Find(app, [&asked] { return asked++ > 0; })),
             QStringLiteral("undefined-variable!"));
}

QTEST_GUILESS_MAIN(StatementProblemsTest)
#include "tst_statementproblems.moc"
