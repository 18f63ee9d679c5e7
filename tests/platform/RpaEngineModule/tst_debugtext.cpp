// SPDX-License-Identifier: Apache-2.0

// Program texts under the debugger, with a real Python: where they stop, and what comes of it.

#include "DebugScript.h"

#include <QTest>

namespace
{

// Line 1 … 12; f() is lines 1 – 4.
const QString counting = QStringLiteral("def f(n):\n"
                                        "    x = n + 1\n"
                                        "    y = x * 2\n"
                                        "    return y\n"
                                        "total = 0\n"
                                        "for i in range(4):\n"
                                        "    total += f(i)\n"
                                        "print(total)\n");

const QString failing = QStringLiteral("def divide(n):\n"
                                       "    try:\n"
                                       "        return 1 / n\n"
                                       "    finally:\n"
                                       "        print('cleaned')\n"
                                       "try:\n"
                                       "    divide(0)\n"
                                       "except ZeroDivisionError:\n"
                                       "    print('caught')\n"
                                       "divide(0)\n");

// Runs until it is told to end.
const QString tight = QStringLiteral("n = 0\n"
                                     "more = True\n"
                                     "def step(k):\n"
                                     "    global n\n"
                                     "    n += k\n"
                                     "print('going', flush=True)\n"
                                     "while more:\n"
                                     "    step(1)\n"
                                     "print('over')\n");

} // namespace

class DebugText : public QObject
{
    Q_OBJECT

private slots:
    void stopsAndGoesOn_data();
    void stopsAndGoesOn();

private:
    void AddBreakpoints();
    void AddSteps();
    void AddErrors();
    void AddLiveRows();
    void AddPlans();
};

void DebugText::stopsAndGoesOn_data()
{
    QTest::addColumn<QString>("program");
    QTest::addColumn<QStringList>("commands");
    QTest::addColumn<QStringList>("told");
    AddBreakpoints();
    AddSteps();
    AddErrors();
    AddLiveRows();
    AddPlans();
}

void DebugText::AddBreakpoints()
{
    const auto row = [](const char* name, const Lines& commands, const Lines& told) {
        QTest::newRow(name) << counting << commands << told;
    };
    row("no breakpoint", Lines{"run", "log"}, Lines{"end", "20"});
    row("at the top level", Lines{"break 5", "run", "continue"}, Lines{"breakpoint 5", "end"});
    row("in a function, each time", Lines{"break 3", "run", "continue", "continue", "continue", "continue"},
        Lines{"breakpoint f:3", "breakpoint f:3", "breakpoint f:3", "breakpoint f:3", "end"});
    row("condition", Lines{"break 3|if n == 2", "run", "eval x", "continue", "log"},
        Lines{"breakpoint f:3", "= 3", "end", "20"});
    row("condition never true", Lines{"break 3|if n > 9", "run"}, Lines{"end"});
    row("condition with a comprehension over locals",
        Lines{"break 3|if [k for k in range(n) if n == 3]", "run", "eval n"}, Lines{"breakpoint f:3", "= 3"});
    row("condition that fails", Lines{"break 3|if nothing", "run"},
        Lines{"breakpoint f:3 断点条件无法计算：NameError: name 'nothing' is not defined"});
    row("condition that is no Python", Lines{"break 5|if 1 +", "run"},
        Lines{"breakpoint 5 断点条件无法计算：SyntaxError: invalid syntax (<expression>, line 1)"});
    row("from the third hit on", Lines{"break 3|from 3", "run", "eval n", "continue", "eval n", "continue"},
        Lines{"breakpoint f:3", "= 2", "breakpoint f:3", "= 3", "end"});
    row("exactly the second hit", Lines{"break 3|at 2", "run", "eval n", "continue"},
        Lines{"breakpoint f:3", "= 1", "end"});
    row("every second hit", Lines{"break 3|every 2", "run", "eval n", "continue", "eval n", "continue"},
        Lines{"breakpoint f:3", "= 1", "breakpoint f:3", "= 3", "end"});
    row("hits count true conditions only", Lines{"break 3|if n > 0|at 2", "run", "eval n"},
        Lines{"breakpoint f:3", "= 2"});
    row("log instead of a stop", Lines{"break 3|log n={n} x={x}, {none}", "run", "log"},
        Lines{"end", "n=0 x=1, {none：NameError} n=1 x=2, {none：NameError} n=2 x=3, {none：NameError} "
                     "n=3 x=4, {none：NameError} 20"});
    row("log with a condition", Lines{"break 3|if n == 3|log last", "run", "log"}, Lines{"end", "last 20"});
    row("disabled", Lines{"break 3|off", "run"}, Lines{"end"});
    row("a loop's line stops once", Lines{"break 6", "run", "continue"}, Lines{"breakpoint 6", "end"});
    row("behind the last statement", Lines{"break 99", "run"}, Lines{"end"});
    row("without stopping", Lines{"break 3", "errors all", "plan nostops", "run"}, Lines{"end"});
    row("two in one function", Lines{"break 2|if n == 3", "break 4|if n == 3", "run", "continue", "continue"},
        Lines{"breakpoint f:2", "breakpoint f:4", "end"});
}

void DebugText::AddSteps()
{
    QTest::newRow("over a call") << counting << Lines{"break 7", "run", "over", "eval total", "over"}
                                 << Lines{"breakpoint 7", "step 6", "= 2", "breakpoint 7"};
    QTest::newRow("into a call and through it")
        << counting << Lines{"break 7|at 1", "run", "into", "over", "over", "over"}
        << Lines{"breakpoint 7", "step f:2", "step f:3", "step f:4", "step 6"};
    QTest::newRow("out of a call") << counting << Lines{"break 3|at 2", "run", "out", "eval total"}
                                   << Lines{"breakpoint f:3", "step 6", "= 6"};
    QTest::newRow("out of the top level runs to the end")
        << counting << Lines{"break 5", "run", "out", "log"} << Lines{"breakpoint 5", "end", "20"};
    QTest::newRow("out meets a breakpoint")
        << counting << Lines{"break 3|at 1", "break 4", "run", "out", "stack"}
        << Lines{"breakpoint f:3", "breakpoint f:4", "f:4 7"};
    QTest::newRow("over meets a breakpoint")
        << counting << Lines{"break 7|at 1", "break 3", "run", "over", "continue"}
        << Lines{"breakpoint 7", "breakpoint f:3", "breakpoint f:3"};
    QTest::newRow("from the first statement")
        << counting << Lines{"plan first", "run", "over", "over", "over", "over"}
        << Lines{"pause 1", "step 5", "step 6", "step 7", "step 6"};
    QTest::newRow("through try, except and finally")
        << failing << Lines{"break 7", "run", "into", "over", "over", "over", "over", "over", "over", "log"}
        << Lines{"breakpoint 7", "step divide:2", "step divide:3", "step divide:5",         "step 8",
                 "step 9",       "step 10",       "failed",        "cleaned caught cleaned"};
    QTest::newRow("statement of several lines is one step")
        << QStringLiteral("a = sum([\n    1,\n    2,\n])\nb = max(\n    a,\n    len('x'),\n)\nprint(a, b)\n")
        << Lines{"plan first", "run", "over", "over", "over", "log"}
        << Lines{"pause 1", "step 5", "step 9", "end", "3 3"};
    QTest::newRow("a comprehension is one step, what it calls is not")
        << QStringLiteral("def g(k):\n    return k\nx = [g(k) for k in (1, 2)]\nprint(x)\n")
        << Lines{"break 3", "run", "into", "out", "over"}
        << Lines{"breakpoint 3", "step g:2", "step 4", "end"};
    QTest::newRow("a generator") << QStringLiteral(
                                        "def g():\n    yield 1\n    yield 2\nfor k in g():\n    print(k)\n")
                                 << Lines{"break 5", "run", "over", "over", "over", "over", "log"}
                                 << Lines{"breakpoint 5", "step 4", "breakpoint 5", "step 4", "end", "1 2"};
}

void DebugText::AddErrors()
{
    QTest::newRow("every error, before anything is cleaned up")
        << failing << Lines{"errors all", "run", "log", "eval n", "stack", "continue", "continue", "log"}
        << Lines{"error divide:3 ZeroDivisionError",
                 "",
                 "= 0",
                 "divide:3 7",
                 "error divide:3 ZeroDivisionError",
                 "failed",
                 "cleaned caught cleaned"};
    QTest::newRow("unhandled errors only")
        << failing << Lines{"errors unhandled", "run", "log", "stack", "continue"}
        << Lines{"error divide:3 ZeroDivisionError", "cleaned caught", "divide:3 10", "failed"};
    QTest::newRow("errors do not stop by themselves")
        << failing << Lines{"run", "log"} << Lines{"failed", "cleaned caught cleaned"};
    QTest::newRow("an error in a with block")
        << QStringLiteral(
               "class C:\n    def __enter__(self):\n        return self\n    def __exit__(self, *a):\n"
               "        print('closed')\nwith C() as c:\n    int('x')\n")
        << Lines{"errors unhandled", "run", "log", "continue"} << Lines{"error 7 ValueError", "", "failed"};
    QTest::newRow("an import that fails")
        << QStringLiteral("import json\nimport no_such_module\n")
        << Lines{"errors unhandled", "run", "continue"} << Lines{"error 2 ModuleNotFoundError", "failed"};
    QTest::newRow("a program that is no Python")
        << QStringLiteral("x = 1\nif x\n") << Lines{"break 1", "run"} << Lines{"failed"};
    QTest::newRow("a handler of another kind does not count")
        << QStringLiteral("try:\n    int('x')\nexcept KeyError:\n    pass\n")
        << Lines{"errors unhandled", "run"} << Lines{"error 2 ValueError"};
    QTest::newRow("raised again by its handler")
        << QStringLiteral("try:\n    int('x')\nexcept ValueError:\n    raise RuntimeError('more')\n")
        << Lines{"errors unhandled", "run"} << Lines{"error 4 RuntimeError"};
    QTest::newRow("switched on during the run")
        << QStringLiteral(
               "def f():\n    int('x')\nprint('going', flush=True)\nwhile True:\n    try:\n        f()\n"
               "    except ValueError:\n        pass\n")
        << Lines{"begin", "until going", "errors all", "wait", "stack"}
        << Lines{"error f:2 ValueError", "f:2 6"};
}

void DebugText::AddLiveRows()
{
    const auto row = [](const char* name, const Lines& commands, const Lines& told) {
        QTest::newRow(name) << tight << commands << told;
    };
    row("set while it runs",
        Lines{"begin", "until going", "break 5", "wait", "clear 5", "eval more = False", "continue"},
        Lines{"breakpoint step:5", "= None", "end"});
    row("set in the frame that runs",
        Lines{"begin", "until going", "break 8", "wait", "continue", "clear 8", "eval more = False",
              "continue"},
        Lines{"breakpoint 8", "breakpoint 8", "= None", "end"});
    row("changed while it runs",
        Lines{"break 5|if n == -1", "begin", "until going", "clear 5", "break 5|if n > 10", "wait",
              "eval n > 10"},
        Lines{"breakpoint step:5", "= True"});
    row("moved while it is paused",
        Lines{"break 5", "run", "clear 5", "break 9", "eval more = False", "continue"},
        Lines{"breakpoint step:5", "= None", "breakpoint 9"});
    row("moved while it runs", Lines{"break 9", "begin", "until going", "clear 9", "break 8", "wait"},
        Lines{"breakpoint 8"});
    row("removed while it runs", Lines{"break 5|if n == -1", "begin", "until going", "clear 5", "stop"},
        Lines{"stopped"});
    QTest::newRow("pause in a tight loop")
        << QStringLiteral(
               "n, more = 0, True\nprint('going', flush=True)\nwhile more: n += 1\nprint('over')\n")
        << Lines{"begin", "until going", "pause", "eval n > 0", "eval more = False", "continue", "log"}
        << Lines{"pause 3", "= True", "= None", "end", "going over"};
    row("stop while paused", Lines{"break 5", "run", "stop", "log"},
        Lines{"breakpoint step:5", "stopped", "going"});
    row("the child goes while paused", Lines{"break 5", "run", "eval __import__('os')._exit(3)"},
        Lines{"breakpoint step:5", "no answer"});
    row("run to here while paused", Lines{"break 5", "run", "clear 5", "eval more = False", "to 9", "over"},
        Lines{"breakpoint step:5", "= None", "target 9", "end"});
    row("run to a place that is none", Lines{"break 5", "run", "to 77"},
        Lines{"breakpoint step:5", "no such place"});
    QTest::newRow("pause in a call that blocks")
        << QStringLiteral("import time\nprint('asleep', flush=True)\ntime.sleep(2)\nprint('awake')\n")
        << Lines{"begin", "until asleep", "pause", "log", "continue"} << Lines{"pause 4", "asleep", "end"};
    QTest::newRow("break behind a call that blocks")
        << QStringLiteral("import time\nprint('asleep', flush=True)\ntime.sleep(2)\nprint('awake')\n")
        << Lines{"begin", "until asleep", "break 4", "wait", "continue"} << Lines{"breakpoint 4", "end"};
    QTest::newRow("in a function that is defined later")
        << QStringLiteral(
               "import time\nprint('asleep', flush=True)\ntime.sleep(2)\ndef late():\n    return 1\n"
               "print(late())\n")
        << Lines{"begin", "until asleep", "break 5", "wait", "continue"} << Lines{"breakpoint late:5", "end"};
    QTest::newRow("in a method and a closure")
        << QStringLiteral(
               "class A:\n    def m(self):\n        k = 2\n        def inner():\n            return k\n"
               "        return inner()\nprint(A().m())\n")
        << Lines{"break 3", "break 5", "run", "continue", "stack", "at k"}
        << Lines{"breakpoint m:3", "breakpoint inner:5", "inner:5 m:6 7", "= 2"};
}

void DebugText::AddPlans()
{
    QTest::newRow("run to here") << counting << Lines{"plan to 8", "run", "eval total", "continue"}
                                 << Lines{"target 8", "= 20", "end"};
    QTest::newRow("run to here stops at what comes before")
        << counting << Lines{"break 5", "plan to 8", "run", "continue"} << Lines{"breakpoint 5", "target 8"};
    QTest::newRow("run from here") << counting << Lines{"plan from 6", "given total=100", "run", "log"}
                                   << Lines{"end", "120"};
    QTest::newRow("run to a line that is none")
        << counting << Lines{"plan to 77", "begin"} << Lines{"not started"};
    QTest::newRow("run from a line that is none")
        << counting << Lines{"plan from 77", "begin"} << Lines{"not started"};
    QTest::newRow("run from here without what it needs")
        << counting << Lines{"plan from 6", "run"} << Lines{"failed"};
    QTest::newRow("a given value that cannot be computed")
        << counting << Lines{"plan from 6", "given total=1 +", "run"} << Lines{"failed"};
    QTest::newRow("run only these lines")
        << counting
        << Lines{"plan only 6-7", "given total=5", "break 7|at 4", "run", "eval total", "continue", "log"}
        << Lines{"breakpoint 7", "= 17", "end", ""};
    QTest::newRow("the run after it is whole again")
        << counting << Lines{"plan only 8-8", "run", "run", "log"} << Lines{"failed", "end", "20"};
    QTest::newRow("slow motion tells each statement and may be ended")
        << counting << Lines{"slow 30", "begin", "slow 0", "wait", "log"} << Lines{"end", "20"};
}

void DebugText::stopsAndGoesOn()
{
    QFETCH(QString, program);
    QFETCH(QStringList, commands);
    QFETCH(QStringList, told);
    DebugScript script;
    script.SetText(program);

    const QStringList heard = script.Do(commands);

    QCOMPARE(heard, told);
}

QTEST_MAIN(DebugText)
#include "tst_debugtext.moc"
