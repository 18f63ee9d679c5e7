// SPDX-License-Identifier: Apache-2.0

#include "ProblemRules.h"

#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaProcess.h>
#include <RpaProcessData/RpaProcessCheck.h>

using namespace ProblemRules;
using namespace ProblemSamples;

// What stops a run, from where runs begin.
class RunStoppersTest : public QObject
{
    Q_OBJECT

private slots:
    void stoppers_data();
    void stoppers() { Compare(); }
    void fixes_data();
    void fixes() { CompareFix(); }
    void errorsAreThoseThatARunIsRefusedFor();
    void startsWhereRunsStart();
    void tellsEachProblemOnce();
};

void RunStoppersTest::stoppers_data()
{
    AddColumns();
    Row("nothing", Main({}), "");
    Row("unknown command", Main({Step("no.such")}), "unknown-command!");
    Row("known command", Main({Log("x")}), "");
    Row("missing sub-process", Main({Run("无")}), "missing-process!");
    Row("sub-process that is there", Visual({Process("主流程", {Run("子")}), Process("子", {Log("x")})}), "");
    Row("reference to a disabled step", Main({Disabled(Set("a")), Log("=a")}), "disabled-reference!");
    Row("disabled reference to a disabled step", Main({Disabled(Set("a")), Disabled(Log("=a"))}), "");
    Row("undefined variable", Main({Log("=a")}), "undefined-variable!");
    Row("variable that is set", Main({Set("a"), Log("=a")}), "");
    Row("argument that is missing", Main({Log("")}), "missing-argument!");
    Row("argument that would not parse", Main({Log("=(")}), "wrong-argument!");
    Row("element that is gone",
        Main({Step("browser.click", {{QStringLiteral("element"), QStringLiteral("e1")}})}),
        "missing-element!");
    Row("element that is there",
        WithElement(Main({Step("browser.click", {{QStringLiteral("element"), QStringLiteral("e1")}})}), "e1"),
        "");
}

void RunStoppersTest::fixes_data()
{
    AddFixColumns();
    FixRow("create a variable", Main({Log("=a")}), RpaProblemFix::CreateVariable, "a");
}

void RunStoppersTest::errorsAreThoseThatARunIsRefusedFor()
{
    const Statements statements{Log("=a"), Set("b"), Run("无"), Step("process.return"), Step("no.such")};
    ProcessDataManager processes;
    processes.AddProcess(QStringLiteral("主流程"))->SetStatements(statements);

    QStringList errors;
    const QVector<RpaProblem> problems = RpaProblemFinder::Find(Main(statements));
    for (const RpaProblem& problem : problems)
        if (problem.severity == RpaProblemSeverity::Error)
            errors.append(problem.message);
    QStringList refused;
    const QList<RpaCheckInfo> findings = RpaProcessCheck(processes).Check(QStringLiteral("主流程"));
    for (const RpaCheckInfo& finding : findings)
        refused.append(finding.message);

    QCOMPARE(refused.size(), 3);
    QCOMPARE(errors, refused);
}

void RunStoppersTest::startsWhereRunsStart()
{
    // The sub-process reads what its caller sets; only with a tool of its own is that missing.
    RpaAppCopy app = Visual({Process("子", {Log("=a")}), Process("主", {Set("a"), Run("子")})});
    app.pages.first().tools.first().processName = QStringLiteral("主");
    QCOMPARE(RulesOf(app), QString());
    app.pages.first().tools.clear();
    QCOMPARE(RulesOf(app), QString());

    RpaToolItem tool;
    tool.processName = QStringLiteral("子");
    app.pages.first().tools.append(tool);
    QCOMPARE(RulesOf(app), QStringLiteral("undefined-variable!"));
}

void RunStoppersTest::tellsEachProblemOnce()
{
    RpaAppCopy app =
        Visual({Process("甲", {Run("丙")}), Process("乙", {Run("丙")}), Process("丙", {Log("=a")})});
    RpaToolItem tool = app.pages.first().tools.first();
    tool.processName = QStringLiteral("乙");
    app.pages.first().tools.append(tool);

    QCOMPARE(RulesOf(app), QStringLiteral("undefined-variable!"));
}

QTEST_GUILESS_MAIN(RunStoppersTest)
#include "tst_runstoppers.moc"
