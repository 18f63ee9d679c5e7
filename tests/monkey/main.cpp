// SPDX-License-Identifier: Apache-2.0

#include "MonkeyLife.h"
#include "MonkeyRun.h"
#include "StackOnCrash.h"
#include "Workstation.h"

#include <QApplication>
#include <QCommandLineParser>

#include <cstdio>

// rpa-monkey [--seed N] [--acts N] [--seconds N] [--plant FAULT]
// Lets a monkey loose on a real workstation with a real server in bad weather. Fails when the workstation
// crashes, hangs, cannot be closed afterwards, or has lost a save that the server acknowledged. With a
// planted fault (Plant.h) it is the other way round: fails unless that fault was noticed.
namespace
{
int Live(int argc, char** argv)
{
    StackOnCrash::Install();
    Workstation::PrepareProcess();
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    const QStringList words = QApplication::arguments();
    MonkeyLife::Order order;
    order.home = words.at(2);
    order.server = words.at(3);
    order.seed = words.at(4).toUInt();
    order.acts = words.at(5).toInt();
    order.time = std::chrono::seconds(words.at(6).toInt());
    order.password = words.at(7);
    order.accounts = words.at(8).split(QLatin1Char(','));
    order.plant = Plants::FromName(words.at(9)).value_or(Plant::None);
    if (order.plant != Plant::None) {
        order.patience = std::chrono::seconds(10);
        order.longestLeaving = std::chrono::seconds(5);
    }
    MonkeyLife life(order);
    if (!life.Start())
        return 1;
    QApplication::exec();
    return life.GetCode();
}
} // namespace

int main(int argc, char** argv)
{
    if (argc == 10 && qstrcmp(argv[1], "--live") == 0)
        return Live(argc, argv);
    QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.addOption({QStringLiteral("seed"), QStringLiteral("What it does."), QStringLiteral("number"),
                      QStringLiteral("1")});
    parser.addOption({QStringLiteral("acts"), QStringLiteral("How much it does."), QStringLiteral("number"),
                      QStringLiteral("20000")});
    parser.addOption({QStringLiteral("seconds"),
                      QStringLiteral("How long at most; 0: until it has done enough."),
                      QStringLiteral("number"), QStringLiteral("0")});
    parser.addOption(
        {QStringLiteral("plant"),
         QStringLiteral("A fault that must be noticed: ") + Plants::Names().join(QStringLiteral(", ")),
         QStringLiteral("fault")});
    parser.process(application);
    const auto plant = Plants::FromName(parser.value(QStringLiteral("plant")));
    if (!plant)
        parser.showHelp(2);
    MonkeyRun run(parser.value(QStringLiteral("seed")).toUInt(), parser.value(QStringLiteral("acts")).toInt(),
                  std::chrono::seconds(parser.value(QStringLiteral("seconds")).toInt()), *plant);
    QObject::connect(&run, &MonkeyRun::SigEnded, &application, &QCoreApplication::quit, Qt::QueuedConnection);
    if (!run.Start())
        return 2;
    QCoreApplication::exec();
    return run.GetCode();
}
