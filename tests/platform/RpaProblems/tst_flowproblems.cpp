// SPDX-License-Identifier: Apache-2.0

#include "ProblemRules.h"

using namespace ProblemRules;
using namespace ProblemSamples;

// Where a run never comes to, and what it never comes out of.
class FlowProblemsTest : public QObject
{
    Q_OBJECT

private slots:
    void unreachable_data();
    void unreachable() { Compare(); }
    void recursion_data();
    void recursion() { Compare(); }
};

void FlowProblemsTest::unreachable_data()
{
    AddColumns();
    const RpaStatement end = Step("process.return");
    const RpaStatement leave = Step("loop.break");
    const RpaStatement otherwise = Step("else", {}, QString(), {end});
    Row("behind the end", Main({end, Log("x"), Log("y")}), "unreachable-step");
    Row("the end at the end", Main({Log("x"), end}), "");
    Row("disabled end", Main({Disabled(end), Log("x")}), "");
    Row("disabled behind the end", Main({end, Disabled(Log("x"))}), "");
    Row("behind a failure",
        Main({Step("process.fail", {{QStringLiteral("reason"), QStringLiteral("x")}}), Log("x")}),
        "unreachable-step");
    Row("behind a break", Main({While("x()", {leave, Log("x")})}), "undefined-variable! unreachable-step");
    Row("behind a branch that ends", Main({If({end}), Log("x")}), "");
    Row("behind branches that all end", Main({If({end}), otherwise, Log("x")}), "unreachable-step");
    Row("the branches themselves", Main({If({end}), otherwise}), "");
    Row("one branch goes on", Main({If({Log("x")}), otherwise, Log("x")}), "");
    Row("behind an endless loop", Main({While("True", {Log("x")}), Log("x")}), "unreachable-step");
    Row("behind a loop with a break", Main({While("True", {If({leave})}), Log("x")}), "");
    Row("a break of the loop inside", Main({While("True", {While("1", {leave})}), Log("x")}),
        "unreachable-step");
    Row("behind a loop with a condition", Main({Set("a"), While("a", {}), Log("x")}), "");
}

void FlowProblemsTest::recursion_data()
{
    AddColumns();
    const RpaStatement end = Step("process.return");
    Row("runs itself", Main({Run("主流程")}), "endless-recursion");
    Row("runs itself on a condition", Main({If({Run("主流程")})}), "");
    Row("runs itself unless it leaves", Main({If({end}), Run("主流程")}), "");
    Row("runs itself, disabled", Main({Disabled(Run("主流程"))}), "");
    Row("two that run each other", Visual({Process("甲", {Run("乙")}), Process("乙", {Run("甲")})}),
        "endless-recursion endless-recursion");
    Row("one after the other", Visual({Process("甲", {Run("乙")}), Process("乙", {Log("x")})}), "");
}

QTEST_GUILESS_MAIN(FlowProblemsTest)
#include "tst_flowproblems.moc"
