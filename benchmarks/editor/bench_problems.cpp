// SPDX-License-Identifier: Apache-2.0

// What the problems of an app of 10,000 statements take: on the GUI thread the copy that they are looked for in and
// the list, on the other one the search; from an edit to the list. The search beside the check before a run alone.

#include "FrameTimes.h"

#include <RpaAppData/RpaAppData.h>
#include <RpaProblems/RpaProblemFinder.h>
#include <RpaProblems/RpaProblemPane.h>
#include <RpaProblems/RpaProblemWatch.h>
#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaProcess.h>
#include <RpaProcessData/RpaProcessCheck.h>
#include <WbBaseUI/WbTheme.h>

#include <QApplication>
#include <QEventLoop>

namespace
{
constexpr int statementCount = 10000;
constexpr int rounds = 15;

RpaStatement Make(const char* command, const QMap<QString, QString>& arguments)
{
    RpaStatement statement;
    statement.command = QLatin1String(command);
    statement.arguments = arguments;
    return statement;
}

// Half of it sets variables, half of it reads them; one in a hundred reads what nobody sets.
void Fill(RpaAppData& app)
{
    QVector<RpaStatement> statements;
    for (int i = 0; i < statementCount / 2; ++i) {
        const QString name = QStringLiteral("v%1").arg(i);
        statements.append(Make(
            "variable.set", {{QStringLiteral("name"), name}, {QStringLiteral("value"), QString::number(i)}}));
        const QString read = i % 50 == 0 ? QStringLiteral("=w%1").arg(i) : QStringLiteral("=") + name;
        statements.append(Make("log", {{QStringLiteral("text"), read}}));
    }
    app.GetProcessDataManager()->GetProcess(0)->SetStatements(statements);
}

template <typename Work>
void Print(const char* what, const Work& work)
{
    QVector<double> times;
    for (int i = 0; i < rounds; ++i)
        times << FrameTimes::Measure(work);
    FrameTimes::Print(what, FrameTimes::Of(times));
}

void PrintEditToAnswer(RpaAppData& app)
{
    RpaProblemWatch watch;
    QEventLoop loop;
    QObject::connect(&watch, &RpaProblemWatch::SigChanged, &loop, &QEventLoop::quit);
    watch.SetApp(&app);
    loop.exec();
    RpaProcess* process = app.GetProcessDataManager()->GetProcess(0);
    const QString last = process->GetRoot()->GetChild(statementCount - 1)->GetId();
    int edit = 0;
    Print("edit to answer, pause included", [&] {
        process->SetArgument(last, QStringLiteral("text"), QStringLiteral("=w%1").arg(++edit));
        loop.exec();
    });
}
} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    WbTheme::Instance()->Apply(WbTheme::Scheme::Light);
    RpaAppData app;
    app.InitDefault();
    Fill(app);
    const RpaAppCopy copy = RpaAppCopy::Of(app);
    const ProcessDataManager& processes = *app.GetProcessDataManager();
    const QString first = processes.GetProcessNameFirst();

    Print("copy, GUI thread", [&app] { RpaAppCopy::Of(app); });
    Print("check before a run", [&] { RpaProcessCheck(processes).Check(first); });
    Print("search, other thread", [&copy] { RpaProblemFinder::Find(copy); });
    RpaProblemPane pane;
    pane.SetOpen(true);
    pane.show();
    const QList<RpaCheckInfo> findings = RpaProcessCheck(processes).Check(first);
    pane.SetApp(&app);
    Print("list, GUI thread", [&] { pane.ShowRun(findings); });
    pane.SetApp(nullptr);
    PrintEditToAnswer(app);
    return 0;
}
