// SPDX-License-Identifier: Apache-2.0

// The wire between a process and the editor: calls with an answer, and log lines beside a living window. Both
// ends of the calls run on one core: an idle virtual machine adds more to a wake-up on another core than the
// whole call takes.
//
// Pass: >= 40,000 calls/s; >= 20,000 log lines/s with no gap of the event loop above 16 ms.

#include "EngineBench.h"
#include "ProcessorUse.h"

#include <QTimer>

#include <cstdio>

namespace
{
constexpr int calls = 20000;
constexpr int callRounds = 5;
constexpr int logLines = 100000;

struct CallResult
{
    double perSecond = 0;
    // What a call costs each end, whatever else the machine does.
    double editorMicroseconds = 0;
    double childMicroseconds = 0;
};

CallResult Calls(EngineBench& bench)
{
    const QString program =
        QStringLiteral("import time\nstart, cpu = time.perf_counter(), time.process_time()\n"
                       "for i in range(%1):\n    rpa.get_param('a')\n"
                       "cpu = time.process_time() - cpu\n"
                       "print('rate', %1 / (time.perf_counter() - start))\n"
                       "print('cpu', cpu / %1 * 1e6)\n")
            .arg(calls);
    EngineBench::Idle(500); // the child that is kept ready starts meanwhile
    const double before = ProcessorUse::GetSeconds();
    bench.RunText(program);
    bench.WaitForEnd();
    return {EngineBench::NumberAfter(QStringLiteral("rate ")),
            (ProcessorUse::GetSeconds() - before) / calls * 1e6,
            EngineBench::NumberAfter(QStringLiteral("cpu "))};
}

// The median of some rounds.
CallResult MedianCalls(EngineBench& bench)
{
    Calls(bench); // warms up; its child may still be bound to other cores
    std::vector<double> rates;
    CallResult result;
    for (int round = 0; round < callRounds; ++round) {
        result = Calls(bench);
        rates.push_back(result.perSecond);
    }
    result.perSecond = EngineBench::Median(rates);
    return result;
}

struct LogResult
{
    double linesPerSecond = 0;
    double longestGapMs = 0;
};

LogResult LogLines(EngineBench& bench)
{
    LogResult result;
    QElapsedTimer sinceTick;
    QTimer tick;
    QObject::connect(&tick, &QTimer::timeout, &tick, [&] {
        result.longestGapMs = std::max(result.longestGapMs, double(sinceTick.nsecsElapsed()) / 1e6);
        sinceTick.start();
    });
    qint64 seen = 0;
    QObject::connect(EngineBench::Log(), &IRpaLogDataSource::SigLinesAdded, &tick,
                     [&](const QVector<RpaLogLine>& lines) { seen = lines.last().number; });
    QElapsedTimer clock;
    sinceTick.start();
    tick.start(1);
    clock.start();
    bench.RunText(QStringLiteral("for i in range(%1):\n    print('line', i)\n").arg(logLines));
    // Starting a child is another benchmark's matter.
    result.longestGapMs = 0;
    sinceTick.start();
    bench.WaitForEnd();
    while (seen < logLines)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    result.linesPerSecond = logLines * 1000.0 / double(clock.elapsed());
    return result;
}
} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    EngineBench bench;
    ProcessorUse::UseOneCore(true);
    const CallResult oneCore = MedianCalls(bench);
    ProcessorUse::UseOneCore(false);
    const CallResult anyCore = MedianCalls(bench);
    EngineBench::Idle(500);
    const LogResult log = LogLines(bench);
    std::printf(
        "calls  %9.0f /s on one core (pass: >= 40000), %.0f /s on any; %.1f us editor + %.1f us child\n"
        "log    %9.0f lines/s (pass: >= 20000), longest gap of the event loop %.1f ms (pass: <= 16)\n",
        oneCore.perSecond, anyCore.perSecond, oneCore.editorMicroseconds, oneCore.childMicroseconds,
        log.linesPerSecond, log.longestGapMs);
    return oneCore.perSecond >= 40000 && log.linesPerSecond >= 20000 && log.longestGapMs <= 16 ? 0 : 1;
}
