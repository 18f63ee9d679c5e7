// SPDX-License-Identifier: Apache-2.0

#include "../RpaEngineModule/DebugStatements.h"

#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaProcess.h>
#include <RpaProcessData/RpaProcessPart.h>

#include <QTest>

using namespace DebugStatements;

namespace
{

const QString mainName = QStringLiteral("主流程");

// 1 set, 2 set, 3 loop, 4 set, 5 if, 6 log, 7 else, 8 log, 9 try, 10 set, 11 except, 12 log, 13 finally, 14 log,
// 15 call.
const QVector<RpaStatement> statements{
    Set("a", "1"),
    Set("b", "2"),
    Loop(3, "i", {Set("c", "a + i"), If("c > b", {Log("c")}), Of("else", {}, {Log("b")})}),
    Of("try", {}, {Set("d", "c")}),
    Of("except", {}, {Log("why")}, QStringLiteral("why")),
    Of("finally", {}, {Log("nowhere")}),
    Call("子流程")};

// As they would run: the command of each enabled statement, "-" for a skipped one.
QString Shape(const RpaProcess& process)
{
    QStringList shape;
    process.ForEach([&](const RpaStatementNode& node) {
        shape << (node.IsEffectivelyEnabled() ? node.GetCommand().section(QLatin1Char('.'), -1)
                                              : QStringLiteral("-"));
    });
    return shape.join(QLatin1Char(' '));
}

} // namespace

class ProcessPart : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void beginsInTheMiddle_data();
    void beginsInTheMiddle();
    void hasOnlyWhatWasChosen_data();
    void hasOnlyWhatWasChosen();
    void saysWhatItNeeds();
    void anUnknownStatementHasNoPart();

private:
    QString IdOf(int number) const;
    QString ShapeOf(const QVector<RpaStatement>& part) const;

    std::unique_ptr<ProcessDataManager> processes;
    RpaProcess* process = nullptr;
};

void ProcessPart::init()
{
    processes = std::make_unique<ProcessDataManager>();
    process = processes->AddProcess(mainName);
    process->SetStatements(statements);
    processes->AddProcess(QStringLiteral("子流程"))->SetStatements({Log("a + e")});
}

QString ProcessPart::IdOf(int number) const
{
    QStringList ids;
    process->ForEach([&](const RpaStatementNode& node) { ids << node.GetId(); });
    return ids.value(number - 1);
}

QString ProcessPart::ShapeOf(const QVector<RpaStatement>& part) const
{
    ProcessDataManager copy;
    RpaProcessPart::CopyWithPart(*processes, mainName, part, copy);
    return Shape(*copy.FindProcess(mainName));
}

void ProcessPart::beginsInTheMiddle_data()
{
    QTest::addColumn<int>("first");
    QTest::addColumn<QString>("shape");
    const auto row = [](const char* name, int first, const char* shape) {
        QTest::newRow(name) << first << QString::fromLatin1(shape);
    };
    row("at the top level", 2, "- set count set if log else log try set except log finally log run");
    row("in a loop: one turn", 5, "- - count - if log else log try set except log finally log run");
    row("in a condition: taken as true", 6, "- - count - if log - - try set except log finally log run");
    row("in its other branch", 8, "- - count - - - if log try set except log finally log run");
    row("in a try: its handlers stay", 10, "- - - - - - - - try set except log finally log run");
    row("in a handler: as if it had failed", 12, "- - - - - - - - - - if log if log run");
    row("in what is always done", 14, "- - - - - - - - - - - - if log run");
    row("at the end", 15, "- - - - - - - - - - - - - - run");
}

void ProcessPart::beginsInTheMiddle()
{
    QFETCH(int, first);
    QFETCH(QString, shape);

    QCOMPARE(ShapeOf(RpaProcessPart::FromHere(*process, IdOf(first))), shape);
}

void ProcessPart::hasOnlyWhatWasChosen_data()
{
    QTest::addColumn<QVector<int>>("chosen");
    QTest::addColumn<QString>("shape");
    const auto row = [](const char* name, const QVector<int>& chosen, const char* shape) {
        QTest::newRow(name) << chosen << QString::fromLatin1(shape);
    };
    row("one", {2}, "- set - - - - - - - - - - - - -");
    row("one in a loop", {4}, "- - count set - - - - - - - - - - -");
    row("both branches", {6, 8}, "- - count - if log if log - - - - - - -");
    row("a try without its handlers", {10}, "- - - - - - - - if set - - - - -");
    row("a block as a whole", {5, 6}, "- - count - if log - - - - - - - - -");
}

void ProcessPart::hasOnlyWhatWasChosen()
{
    QFETCH(QVector<int>, chosen);
    QFETCH(QString, shape);
    QStringList ids;
    for (const int number : qAsConst(chosen))
        ids << IdOf(number);

    QCOMPARE(ShapeOf(RpaProcessPart::Only(*process, ids)), shape);
}

void ProcessPart::saysWhatItNeeds()
{
    const QVector<RpaStatement> part = RpaProcessPart::FromHere(*process, IdOf(5));

    const RpaPartVariables variables = RpaProcessPart::FindVariables(*processes, mainName, part);

    // a is read in the sub-process only, nothing sets e and nowhere; the except sets why.
    QCOMPARE(variables.needed, (QStringList{QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")}));
    QCOMPARE(variables.unknown, (QStringList{QStringLiteral("e"), QStringLiteral("nowhere")}));
}

void ProcessPart::anUnknownStatementHasNoPart()
{
    QVERIFY(RpaProcessPart::FromHere(*process, QStringLiteral("none")).isEmpty());
    QVERIFY(RpaProcessPart::Only(*process, {QStringLiteral("none")}).isEmpty());
}

QTEST_MAIN(ProcessPart)
#include "tst_rpaprocesspart.moc"
