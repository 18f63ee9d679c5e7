// SPDX-License-Identifier: Apache-2.0

// Visual processes under the debugger, with a real Python: statements, sub-processes and blocks.

#include "DebugScript.h"
#include "DebugStatements.h"

using namespace DebugStatements;

Q_DECLARE_METATYPE(QVector<RpaStatement>)

namespace
{

// 1 set, 2 loop, 3 call, 4 add, 5 log; 子流程: 1 set, 2 set.
const QVector<RpaStatement> calling{Set("和", "0"), Loop(3, "次数", {Call("子流程"), Set("和", "和 + 积")}),
                                    Log("和")};
const QVector<RpaStatement> called{Set("积", "次数 * 2"), Set("完成", "True")};

// 1 try, 2 set, 3 fail, 4 set, 5 except, 6 log, 7 finally, 8 log, 9 if, 10 log, 11 else, 12 log.
const QVector<RpaStatement> trying{
    Of("try", {},
       {Set("a", "1"), Of("process.fail", {{QStringLiteral("reason"), QStringLiteral("坏了")}}),
        Set("a", "2")}),
    Of("except", {}, {Log("原因")}, QStringLiteral("原因")), Of("finally", {}, {Log("'最后'")}),
    If("a > 1", {Log("'大'")}), Of("else", {}, {Log("'小'")})};

const QVector<RpaStatement> severalLines{Set("a", "[\n1,\n2]"), Set("b", "sum(\na)"), Log("b")};

} // namespace

class DebugVisual : public QObject
{
    Q_OBJECT

private slots:
    void stopsAndGoesOn_data();
    void stopsAndGoesOn();
};

void DebugVisual::stopsAndGoesOn_data()
{
    QTest::addColumn<QVector<RpaStatement>>("main");
    QTest::addColumn<QVector<RpaStatement>>("sub");
    QTest::addColumn<QStringList>("commands");
    QTest::addColumn<QStringList>("told");
    const auto row = [](const char* name, const QVector<RpaStatement>& main, const Lines& commands,
                        const Lines& told) { QTest::newRow(name) << main << called << commands << told; };

    row("no breakpoint", calling, {"run", "log"}, {"end", "12"});
    row("in the process", calling, {"break 4", "run", "eval 积", "continue", "eval 积"},
        {"breakpoint 主流程#4", "= 2", "breakpoint 主流程#4", "= 4"});
    row("in a sub-process, with its callers", calling, {"break 子流程:2", "run", "stack"},
        {"breakpoint 子流程#2", "子流程#2 主流程#3"});
    row("condition and Chinese names", calling, {"break 子流程:2|if 次数 == 3", "run", "eval 和", "continue"},
        {"breakpoint 子流程#2", "= 6", "end"});
    row("second hit", calling, {"break 子流程:1|at 2", "run", "eval 次数", "continue"},
        {"breakpoint 子流程#1", "= 2", "end"});
    row("log text", calling, {"break 子流程:1|log 第{次数}次", "run", "log"},
        {"end", "第1次 第2次 第3次 12"});
    row("into the sub-process and back", calling,
        {"break 3|at 1", "run", "into", "over", "over", "over", "over"},
        {"breakpoint 主流程#3", "step 子流程#1", "step 子流程#2", "step 主流程#4", "step 主流程#2",
         "step 主流程#3"});
    row("over the sub-process", calling, {"break 3|at 1", "run", "over", "over"},
        {"breakpoint 主流程#3", "step 主流程#4", "step 主流程#2"});
    row("out of the sub-process", calling, {"break 子流程:1|at 2", "run", "out", "eval 积"},
        {"breakpoint 子流程#1", "step 主流程#4", "= 4"});
    row("out of the process", calling, {"break 4|at 1", "run", "out", "log"},
        {"breakpoint 主流程#4", "end", "12"});
    row("the loop stops once, stepping each time", calling,
        {"break 2", "run", "over", "over", "over", "over"},
        {"breakpoint 主流程#2", "step 主流程#3", "step 主流程#4", "step 主流程#2", "step 主流程#3"});
    row("a value is changed, and the outcome with it", calling,
        {"break 5", "run", "vars 全局变量", "set 和 100", "continue", "log"},
        {"breakpoint 主流程#5", "和=12 完成=True 次数=3 积=6", "和=100", "end", "100"});
    row("an evaluation has a side effect", calling, {"break 5", "run", "eval 和 = 和 * 2", "continue", "log"},
        {"breakpoint 主流程#5", "= None", "end", "24"});
    row("run to here", calling, {"plan to 4", "run", "continue"}, {"target 主流程#4", "end"});
    row("run to here while paused", calling, {"break 1", "run", "to 子流程:2", "continue"},
        {"breakpoint 主流程#1", "target 子流程#2", "end"});
    row("from the first statement", calling, {"plan first", "run", "into"},
        {"pause 主流程#1", "step 主流程#2"});
    row("through try, except and finally", trying,
        {"break 2", "run", "over", "over", "over", "over", "over", "over", "over", "log"},
        {"breakpoint 主流程#2", "step 主流程#3", "step 主流程#5", "step 主流程#6", "step 主流程#8",
         "step 主流程#9", "step 主流程#12", "end", "坏了 最后 小"});
    row("at branches", trying, {"break 5", "break 7", "break 11", "run", "continue", "continue", "continue"},
        {"breakpoint 主流程#5", "breakpoint 主流程#7", "breakpoint 主流程#11", "end"});
    row("every error, before the handler", trying, {"errors all", "run", "log", "eval a", "continue", "log"},
        {"error 主流程#3 RuntimeError", "", "= 1", "end", "坏了 最后 小"});
    row("handled errors do not stop", trying, {"errors unhandled", "run"}, {"end"});
    row("an error in a sub-process", {Set("次数", "'x' + 1 if 0 else None"), Call("子流程")},
        {"errors unhandled", "run", "stack", "set 次数 1", "continue"},
        {"error 子流程#1 TypeError", "子流程#1 主流程#2", "! 这个值已不可用", "failed"});
    row("a statement of several lines is one step", severalLines,
        {"plan first", "run", "over", "over", "over", "log"},
        {"pause 主流程#1", "step 主流程#2", "step 主流程#3", "end", "3"});
    row("pause in a sub-process that is called forever",
        {Set("次数", "1"), Of("loop.while", {{QStringLiteral("condition"), QStringLiteral("次数")}},
                              {Log("'开始'"), Call("子流程")})},
        {"begin", "until 开始", "break 子流程:2", "wait", "clear 子流程:2", "eval 次数 = 0", "continue"},
        {"breakpoint 子流程#2", "= None", "end"});
    row("run from here", calling, {"plan from 5", "given 和=7", "run", "log"}, {"end", "7"});
    row("run from within a loop", calling,
        {"plan from 4", "given 和=1", "given 积=5", "break 4", "run", "over", "continue", "log"},
        {"breakpoint 主流程#4", "step 主流程#2", "end", "6"});
    row("run only the chosen statements", calling,
        {"plan only 4-5", "given 和=1", "given 积=1", "run", "log"}, {"end", "2"});
    row("run from a handler", trying, {"plan from 6", "given 原因='给定'", "given a=5", "run", "log"},
        {"end", "给定 最后 大"});
    row("run from here without what it needs", calling, {"plan from 4", "errors all", "run", "continue"},
        {"error 主流程#4 NameError", "failed"});
    row("run from a statement that is none", calling, {"plan from 77", "begin"}, {"not started"});
    row("stop while paused in a sub-process", calling, {"break 子流程:1", "run", "stop"},
        {"breakpoint 子流程#1", "stopped"});
}

void DebugVisual::stopsAndGoesOn()
{
    QFETCH(QVector<RpaStatement>, main);
    QFETCH(QVector<RpaStatement>, sub);
    QFETCH(QStringList, commands);
    QFETCH(QStringList, told);
    DebugScript script;
    script.SetProcess(QStringLiteral("主流程"), main);
    script.SetProcess(QStringLiteral("子流程"), sub);

    const QStringList heard = script.Do(commands);

    QCOMPARE(heard, told);
}

QTEST_MAIN(DebugVisual)
#include "tst_debugvisual.moc"
