// SPDX-License-Identifier: Apache-2.0

// From the click on "run" to the first statement: in a fresh program (cold), and when the engine has kept a
// child ready (warm).
//
// Pass: cold median <= 150 ms, warm median <= 30 ms.

#include "EngineBench.h"

#include <QProcess>

#include <cstdio>

namespace
{
constexpr int rounds = 15;

double MillisecondsToFirstStatement(EngineBench& bench)
{
    QElapsedTimer clock;
    double elapsed = -1;
    bench.onParam = [&] { elapsed = double(clock.nsecsElapsed()) / 1e6; };
    clock.start();
    bench.RunText(QStringLiteral("rpa.get_param('a')\n"));
    bench.WaitForEnd();
    bench.onParam = nullptr;
    return elapsed;
}

double ColdInAProcessOfItsOwn(const QString& program)
{
    QProcess process;
    process.start(program, {QStringLiteral("--once")});
    process.waitForFinished(-1);
    return process.readAllStandardOutput().trimmed().toDouble();
}
} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    EngineBench bench;
    if (application.arguments().contains(QStringLiteral("--once"))) {
        std::printf("%f\n", MillisecondsToFirstStatement(bench));
        return 0;
    }
    std::vector<double> cold;
    cold.reserve(rounds);
    for (int round = 0; round < rounds; ++round)
        cold.push_back(ColdInAProcessOfItsOwn(QCoreApplication::applicationFilePath()));
    std::vector<double> warm;
    MillisecondsToFirstStatement(bench);
    for (int round = 0; round < rounds; ++round) {
        EngineBench::Idle(500);
        warm.push_back(MillisecondsToFirstStatement(bench));
    }
    const double coldMedian = EngineBench::Median(cold);
    const double warmMedian = EngineBench::Median(warm);
    std::printf(
        "cold %7.1f ms, worst %7.1f (pass: median <= 150)\nwarm %7.1f ms, worst %7.1f (pass: median <= 30)\n",
        coldMedian, *std::max_element(cold.begin(), cold.end()), warmMedian,
        *std::max_element(warm.begin(), warm.end()));
    return coldMedian <= 150 && warmMedian <= 30 ? 0 : 1;
}
