// SPDX-License-Identifier: Apache-2.0

// A text in an app of 10,000 statements in ten processes: found, replaced, and a variable renamed, beside a plain
// walk that only asks every text whether it holds it.

#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaProcess.h>
#include <RpaProcessData/RpaProcessSearch.h>
#include <RpaProcessData/RpaVariableRename.h>

#include <QElapsedTimer>

#include <algorithm>
#include <cstdio>

namespace
{
constexpr int processCount = 10;
constexpr int statementsEach = 1000;
const QString searched = QStringLiteral("订单");

RpaStatement MakeStatement(int i)
{
    RpaStatement statement;
    statement.id = QString::number(i);
    const QString number = QString::number(i % 40);
    switch (i % 4) {
    case 0:
        statement.command = QStringLiteral("variable.set");
        statement.arguments = {
            {QStringLiteral("name"), i % 40 == 0 ? searched : QStringLiteral("变量") + number},
            {QStringLiteral("value"), QStringLiteral("第 %1 行的说明，不短也不长").arg(i)}};
        break;
    case 1:
        statement.command = QStringLiteral("if");
        statement.arguments = {{QStringLiteral("condition"),
                                QStringLiteral("变量%1 > 3 and len(%2) < 9").arg(number, searched)}};
        break;
    case 2:
        statement.command = QStringLiteral("log");
        statement.arguments = {
            {QStringLiteral("text"), QStringLiteral("=f\"共 {变量%1} 张\" + str(变量%1)").arg(number)},
            {QStringLiteral("level"), QStringLiteral("info")}};
        statement.note = i % 20 == 2 ? QStringLiteral("订单在这里处理") : QString();
        break;
    default:
        statement.command = QStringLiteral("loop.list");
        statement.arguments = {
            {QStringLiteral("list"), QStringLiteral("[行 for 行 in 表 if 行[%1]]").arg(number)}};
        statement.output = QStringLiteral("当前项") + number;
    }
    return statement;
}

void Fill(ProcessDataManager& manager)
{
    for (int p = 0; p < processCount; ++p) {
        QVector<RpaStatement> statements;
        for (int i = 0; i < statementsEach; ++i)
            statements.append(MakeStatement(p * statementsEach + i));
        manager.AddProcess(QStringLiteral("流程%1").arg(p + 1))->SetStatements(statements);
    }
}

int PlainWalk(const ProcessDataManager& manager)
{
    int found = 0;
    for (int p = 0; p < manager.GetCount(); ++p)
        manager.GetProcess(p)->ForEach([&found](const RpaStatementNode& node) {
            const RpaStatement& values = node.GetValues();
            for (const QString& text : values.arguments)
                found += text.contains(searched, Qt::CaseInsensitive) ? 1 : 0;
            found += values.output.contains(searched, Qt::CaseInsensitive) ? 1 : 0;
            found += values.note.contains(searched, Qt::CaseInsensitive) ? 1 : 0;
        });
    return found;
}

// The best and the median of several times, and what the last one found.
template <typename Act>
void Measure(const char* name, const char* unit, Act act)
{
    constexpr int rounds = 15;
    QVector<double> times;
    int found = 0;
    for (int i = 0; i < rounds; ++i) {
        QElapsedTimer timer;
        timer.start();
        found = act();
        times.append(double(timer.nsecsElapsed()) / 1e6);
    }
    std::sort(times.begin(), times.end());
    std::printf("  %-28s best %7.2f ms, median %7.2f ms, %d %s\n", name, times.first(), times.at(rounds / 2),
                found, unit);
}
} // namespace

int main()
{
    ProcessDataManager manager;
    Fill(manager);
    std::printf("%d statements in %d processes\n", processCount * statementsEach, processCount);
    Measure("plain walk", "places", [&] { return PlainWalk(manager); });

    RpaSearchOptions options;
    options.text = searched;
    const RpaProcessSearch everywhere(options);
    options.inTexts = false;
    options.inNotes = false;
    const RpaProcessSearch names(options);
    const QVector<RpaSearchPlace> places = everywhere.Find(manager);
    const QString with = QStringLiteral("票");
    Measure("find", "places", [&] { return int(everywhere.Find(manager).size()); });
    Measure("find in names of variables", "places", [&] { return int(names.Find(manager).size()); });
    Measure("what would be replaced", "statements",
            [&] { return int(everywhere.Replace(manager, places, with).size()); });
    Measure("what would be renamed", "places",
            [&] { return RpaVariableRename(manager, searched, with).CountPlaces(); });
    return 0;
}
