// SPDX-License-Identifier: Apache-2.0

// How fast statements run: a translated process in the engine, with the sampler that tells where it stands,
// beside the same statements as plain Python. Both alternate in one run. When RPA_NODE_RED_DIR names a folder
// where "npm install node-red" was done, function nodes of the same four statements are measured there as
// well.
//
// Pass: engine >= 0.4 x plain Python.

#include "EngineBench.h"

#include <WbSystem/PythonInterpreter.h>

#include <QProcess>

#include <cstdio>

namespace
{
constexpr int turns = 1000000;
constexpr int statementsPerTurn = 4;
constexpr int rounds = 5;

RpaStatement Set(const QString& name, const QString& value)
{
    RpaStatement statement;
    statement.command = QStringLiteral("variable.set");
    statement.arguments = {{QStringLiteral("name"), name}, {QStringLiteral("value"), value}};
    return statement;
}

RpaStatement Log(const QString& text)
{
    RpaStatement statement;
    statement.command = QStringLiteral("log");
    statement.arguments = {{QStringLiteral("text"), text}, {QStringLiteral("level"), QStringLiteral("info")}};
    return statement;
}

QVector<RpaStatement> Process()
{
    RpaStatement loop;
    loop.command = QStringLiteral("loop.count");
    loop.arguments = {{QStringLiteral("times"), QString::number(turns)}};
    loop.output = QStringLiteral("i");
    loop.children = {Set(QStringLiteral("x"), QStringLiteral("=x + 1")),
                     Set(QStringLiteral("y"), QStringLiteral("=x * 2")),
                     Set(QStringLiteral("text"), QStringLiteral("=str(y)")),
                     Set(QStringLiteral("z"), QStringLiteral("=len(text)"))};
    const QString now = QStringLiteral("=__import__('time').perf_counter()");
    return {Set(QStringLiteral("x"), QStringLiteral("=0")), Set(QStringLiteral("start"), now), loop,
            Set(QStringLiteral("end"), now), Log(QStringLiteral("=f'seconds {end - start}'"))};
}

// As a programmer would write it by hand, with the process's variables where all of an app's processes see
// them.
double PlainSeconds()
{
    const QString program =
        QStringLiteral("import time\ndef main():\n    global start, x, y, text, z, i\n    x = 0\n"
                       "    start = time.perf_counter()\n    for i in range(1, %1 + 1):\n        x = x + 1\n"
                       "        y = x * 2\n        text = str(y)\n        z = len(text)\n"
                       "    print(time.perf_counter() - start)\nmain()\n")
            .arg(turns);
    QProcess python;
    python.start(PythonInterpreter::Find(), {QStringLiteral("-I"), QStringLiteral("-c"), program});
    python.waitForFinished(-1);
    return python.readAllStandardOutput().trimmed().toDouble();
}

void PrintNodeRed()
{
    const QString folder = qEnvironmentVariable("RPA_NODE_RED_DIR");
    if (folder.isEmpty()) {
        std::printf("Node-RED     left out: RPA_NODE_RED_DIR is not set\n");
        return;
    }
    QProcess node;
    node.setWorkingDirectory(folder);
    node.start(QStringLiteral("node"), {QStringLiteral(RPA_NODE_RED_PROGRAM)});
    node.waitForFinished(-1);
    const double rate = node.readAllStandardOutput().trimmed().toDouble();
    std::printf("Node-RED     %12.0f function nodes/s, %.0f statements/s\n", rate, rate * statementsPerTurn);
}
} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    EngineBench bench;
    std::vector<double> engine;
    std::vector<double> plain;
    for (int round = 0; round < rounds; ++round) {
        plain.push_back(PlainSeconds());
        if (!bench.RunStatements(Process()))
            return 1;
        bench.WaitForEnd();
        engine.push_back(EngineBench::NumberAfter(QStringLiteral("seconds ")));
        EngineBench::Idle(200);
    }
    const double count = double(turns) * statementsPerTurn;
    const double engineRate = count / EngineBench::Median(engine);
    const double plainRate = count / EngineBench::Median(plain);
    std::printf("engine       %12.0f statements/s\nplain Python %12.0f statements/s\nratio        %12.2f "
                "(pass: >= 0.4)\n",
                engineRate, plainRate, engineRate / plainRate);
    PrintNodeRed();
    return engineRate >= 0.4 * plainRate ? 0 : 1;
}
