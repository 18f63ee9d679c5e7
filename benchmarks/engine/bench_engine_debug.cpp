// SPDX-License-Identifier: Apache-2.0

// What debugging costs, in processor time of the program's own thread: a loop in one process of a program, without
// breakpoints, with one in another process, and with one in the loop whose condition is false; beside each the same
// under bdb of Python's library. A step: from the request to the report that the program stands.
//
// Pass: a breakpoint elsewhere >= 0.9 x without, 150,000 hits/s of a false condition, 99 % of the steps within 30 ms.

#include "EngineBench.h"

#include <RpaEngineModule/RpaDebugSession.h>
#include <WbSystem/PythonInterpreter.h>

#include <QProcess>

#include <cstdio>

namespace
{
constexpr int turns = 400000;
constexpr int statementsPerTurn = 4;
constexpr int rounds = 5;
constexpr int steps = 400;
constexpr int lineOfOther = 3;
constexpr int lineInLoop = 8;

QString Program(int count)
{
    return QStringLiteral("import time\n"
                          "def other(k):\n"
                          "    return k\n"
                          "def main():\n"
                          "    x = 0\n"
                          "    start = time.thread_time()\n"
                          "    for i in range(%1):\n"
                          "        x = x + 1\n"
                          "        y = x * 2\n"
                          "        text = str(y)\n"
                          "        z = len(text)\n"
                          "    print('seconds', time.thread_time() - start)\n"
                          "other(1)\n"
                          "main()\n")
        .arg(count);
}

RpaBreakpoint PointAt(int line, const QString& condition)
{
    RpaBreakpoint point;
    point.place = {QStringLiteral("主流程"), {}, line};
    point.condition = condition;
    return point;
}

double EngineSeconds(EngineBench& bench, const QVector<RpaBreakpoint>& points)
{
    EngineBench::Engine()->GetDebugSession()->SetBreakpoints(points);
    if (!bench.RunText(Program(turns)))
        return 0;
    bench.WaitForEnd();
    EngineBench::Idle(200);
    return EngineBench::NumberAfter(QStringLiteral("seconds "));
}

// line 0: without any tracing.
double BdbSeconds(int line, int count)
{
    const QString script =
        QStringLiteral("import bdb, sys, linecache\n"
                       "source, line = sys.argv[1], int(sys.argv[2])\n"
                       "linecache.cache['<p>'] = (len(source), None, source.splitlines(True), '<p>')\n"
                       "code = compile(source, '<p>', 'exec')\n"
                       "class D(bdb.Bdb):\n"
                       "    def user_line(self, frame): self.set_continue()\n"
                       "d = D()\n"
                       "d.set_break('<p>', line, cond='i < 0') if line else None\n"
                       "d.run(code, {}) if line else exec(code, {})\n");
    QProcess python;
    python.start(PythonInterpreter::Find(),
                 {QStringLiteral("-I"), QStringLiteral("-c"), script, Program(count), QString::number(line)});
    python.waitForFinished(-1);
    return python.readAllStandardOutput().trimmed().mid(8).toDouble();
}

double Rate(const std::vector<double>& seconds, int count = turns)
{
    return double(count) * statementsPerTurn / EngineBench::Median(seconds);
}

// Milliseconds of each step, sorted.
std::vector<double> StepTimes(EngineBench& bench)
{
    RpaDebugSession* const session = EngineBench::Engine()->GetDebugSession();
    std::vector<double> times;
    QElapsedTimer clock;
    QObject context;
    QObject::connect(session, &RpaDebugSession::SigPaused, &context, [&] {
        if (clock.isValid())
            times.push_back(double(clock.nsecsElapsed()) / 1e6);
        if (times.size() >= steps)
            session->SetBreakpoints({});
        clock.start();
        session->Resume(times.size() < steps ? RpaDebugStep::Over : RpaDebugStep::Continue);
    });
    session->SetBreakpoints({PointAt(lineInLoop, {})});
    if (bench.RunText(Program(steps)))
        bench.WaitForEnd();
    std::sort(times.begin(), times.end());
    return times;
}
} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    EngineBench bench;
    std::vector<double> plain, without, elsewhere, inLoop, bdbElsewhere, bdbInLoop;
    for (int round = 0; round < rounds; ++round) {
        plain.push_back(BdbSeconds(0, turns));
        without.push_back(EngineSeconds(bench, {}));
        elsewhere.push_back(EngineSeconds(bench, {PointAt(lineOfOther, QStringLiteral("k < 0"))}));
        inLoop.push_back(EngineSeconds(bench, {PointAt(lineInLoop, QStringLiteral("i < 0"))}));
        bdbElsewhere.push_back(BdbSeconds(lineOfOther, turns));
        bdbInLoop.push_back(BdbSeconds(lineInLoop, turns / 10));
    }
    const double ratio = Rate(elsewhere) / Rate(without);
    const double hits = Rate(inLoop) / statementsPerTurn;
    std::printf("plain Python          %12.0f statements/s\n", Rate(plain));
    std::printf("no breakpoint         %12.0f statements/s (%.2f of plain Python)\n", Rate(without),
                Rate(without) / Rate(plain));
    std::printf(
        "breakpoint elsewhere  %12.0f statements/s (%.2f of none; pass: >= 0.9)   bdb %12.0f (%.2f)\n",
        Rate(elsewhere), ratio, Rate(bdbElsewhere), Rate(bdbElsewhere) / Rate(plain));
    std::printf("false condition       %12.0f hits/s (pass: >= 150000)   bdb %12.0f\n", hits,
                Rate(bdbInLoop, turns / 10) / statementsPerTurn);
    const std::vector<double> times = StepTimes(bench);
    if (times.size() < steps)
        return 1;
    const double late = times[times.size() * 99 / 100];
    std::printf("step                  %12.2f ms median, %.2f ms at 99 %% (pass: <= 30)\n",
                times[times.size() / 2], late);
    return ratio >= 0.9 && hits >= 150000 && late <= 30 ? 0 : 1;
}
