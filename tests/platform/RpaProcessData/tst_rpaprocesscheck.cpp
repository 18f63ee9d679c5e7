// SPDX-License-Identifier: Apache-2.0

#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaProcess.h>
#include <RpaProcessData/RpaProcessCheck.h>

#include <QtTest>

namespace
{
using Arguments = QMap<QString, QString>;

RpaStatement Make(const char* command, const Arguments& arguments = {}, const QString& output = QString(),
                  const QVector<RpaStatement>& children = {})
{
    RpaStatement statement;
    statement.command = QLatin1String(command);
    statement.arguments = arguments;
    statement.output = output;
    statement.children = children;
    return statement;
}

RpaStatement Disabled(RpaStatement statement)
{
    statement.enabled = false;
    return statement;
}

RpaStatement Set(const QString& name, const QString& value = QStringLiteral("1"))
{
    return Make("variable.set", {{QStringLiteral("name"), name}, {QStringLiteral("value"), value}});
}

RpaStatement Log(const QString& text)
{
    return Make("log", {{QStringLiteral("text"), text}});
}

RpaStatement If(const QString& condition, const QVector<RpaStatement>& children = {})
{
    return Make("if", {{QStringLiteral("condition"), condition}}, QString(), children);
}

RpaStatement Run(const QString& process)
{
    return Make("process.run", {{QStringLiteral("process"), process}});
}

const QString a = QStringLiteral("a");
const QString readA = QStringLiteral("=a");
} // namespace

Q_DECLARE_METATYPE(QVector<RpaStatement>)

class RpaProcessCheckTest : public QObject
{
    Q_OBJECT

private slots:
    void findsMistakes_data();
    void findsMistakes();
    void findsNothingInAGoodProcess();
    void looksIntoTheProcessesThatAreRun();
    void looksForElementsOnlyWhenItKnowsThem();
    void findsReferencesToDisabledStatementsOfAllProcesses();
    void saysWhereAndWhatToDo();
    void saysWhatItIsAbout_data();
    void saysWhatItIsAbout();
    void copesWithProcessesThatRunEachOther();
};

void RpaProcessCheckTest::findsMistakes_data()
{
    QTest::addColumn<QVector<RpaStatement>>("statements");
    QTest::addColumn<QString>("rules");

    const auto row = [](const char* name, const QVector<RpaStatement>& statements, const char* rules) {
        QTest::newRow(name) << statements << QString::fromLatin1(rules);
    };
    row("empty process", {}, "");
    row("unknown command", {Make("no.such")}, "unknown-command");
    row("disabled unknown command", {Disabled(Make("no.such"))}, "");
    row("inside a disabled block", {Disabled(If(QStringLiteral("1"), {Make("no.such")}))}, "");
    row("required argument", {If(QString())}, "missing-argument");
    row("blank argument", {If(QStringLiteral("  "))}, "missing-argument");
    row("default counts", {Make("wait")}, "");
    row("default taken away", {Make("wait", {{QStringLiteral("seconds"), QString()}})}, "missing-argument");
    row("unclosed expression", {If(QStringLiteral("(1"))}, "wrong-argument");
    row("assignment in a condition", {Set(a), If(QStringLiteral("a = 1"))}, "wrong-argument");
    row("no such choice",
        {Make("log", {{QStringLiteral("text"), a}, {QStringLiteral("level"), QStringLiteral("loud")}})},
        "wrong-argument");
    row("no variable name", {Set(QStringLiteral("1a"))}, "wrong-argument");
    row("no output name", {Make("date.now")}, "missing-output");
    row("bad output name", {Make("date.now", {}, QStringLiteral("a b"))}, "wrong-argument");
    row("output may be left out", {Make("loop.count", {{QStringLiteral("times"), QStringLiteral("2")}})}, "");
    row("never set", {Log(readA)}, "undefined-variable");
    row("set before", {Set(a), Log(readA)}, "");
    row("set behind", {Log(readA), Set(a)}, "undefined-variable");
    row("set by itself", {Set(a, readA)}, "undefined-variable");
    row("set in a branch", {If(QStringLiteral("1"), {Set(a)}), Log(readA)}, "");
    row("set further down in the same loop",
        {Make("loop.while", {{QStringLiteral("condition"), QStringLiteral("True")}}, QString(),
              {If(QStringLiteral("1"), {Log(readA)}), Set(a)})},
        "");
    row("item of a loop inside it",
        {Make("loop.list", {{QStringLiteral("list"), QStringLiteral("[1]")}}, a, {Log(readA)})}, "");
    row("changed without a value", {Make("variable.increase", {{QStringLiteral("name"), a}})},
        "undefined-variable");
    row("changed with a value", {Set(a), Make("variable.increase", {{QStringLiteral("name"), a}})}, "");
    row("literal text is no variable", {Log(a)}, "");
    row("variable in a number", {Make("wait", {{QStringLiteral("seconds"), a}})}, "undefined-variable");
    row("built-in function", {Set(a), Log(QStringLiteral("=len(a)"))}, "");
    row("module of a command", {Make("date.now", {}, a), Log(QStringLiteral("=datetime.date.today()"))}, "");
    row("set by a disabled statement", {Disabled(Set(a)), Log(readA)}, "disabled-reference");
    row("set by both", {Disabled(Set(a)), Set(a), Log(readA)}, "");
    row("break outside", {Make("loop.break")}, "outside-loop");
    row("break in a branch of a loop",
        {Make("loop.while", {{QStringLiteral("condition"), QStringLiteral("True")}}, QString(),
              {If(QStringLiteral("1"), {Make("loop.break")})})},
        "");
    row("break behind a loop",
        {Make("loop.while", {{QStringLiteral("condition"), QStringLiteral("True")}}), Make("loop.continue")},
        "outside-loop");
    row("else alone", {Make("else")}, "misplaced-branch");
    row("else behind if", {If(QStringLiteral("1")), Make("else")}, "");
    row("something between", {If(QStringLiteral("1")), Log(a), Make("else")}, "misplaced-branch");
    row("something disabled between", {If(QStringLiteral("1")), Disabled(Log(a)), Make("else")}, "");
    row("if disabled", {Disabled(If(QStringLiteral("1"))), Make("else")}, "misplaced-branch");
    row("two else", {If(QStringLiteral("1")), Make("else"), Make("else")}, "misplaced-branch");
    row("try alone", {Make("try")}, "misplaced-branch");
    row("try and except", {Make("try"), Make("except")}, "");
    row("try, except, finally", {Make("try"), Make("except"), Make("finally")}, "");
    row("no such process", {Run(QStringLiteral("无"))}, "missing-process");
    row("runs itself", {Run(QStringLiteral("主流程"))}, "");
}

void RpaProcessCheckTest::findsMistakes()
{
    QFETCH(QVector<RpaStatement>, statements);
    QFETCH(QString, rules);
    ProcessDataManager processes;
    processes.AddProcess(QStringLiteral("主流程"))->SetStatements(statements);

    QStringList found;
    const QList<RpaCheckInfo> findings = RpaProcessCheck(processes).Check(QStringLiteral("主流程"));
    for (const RpaCheckInfo& finding : findings)
        found.append(finding.rule);

    QCOMPARE(found.join(QLatin1Char(' ')), rules);
}

void RpaProcessCheckTest::findsNothingInAGoodProcess()
{
    ProcessDataManager processes;
    processes.AddProcess(QStringLiteral("主流程"))
        ->SetStatements(
            {Make("excel.open", {{QStringLiteral("path"), QStringLiteral("C:\\表.xlsx")}},
                  QStringLiteral("工作簿")),
             Make("excel.read", {}, QStringLiteral("各行")),
             Make("loop.list", {{QStringLiteral("list"), QStringLiteral("各行[1:]")}}, QStringLiteral("行"),
                  {If(QStringLiteral("行[0] and float(行[1]) > 100"),
                      {Log(QStringLiteral("=f'{行[0]}: {行[1]:.2f}'"))})})});

    QVERIFY(RpaProcessCheck(processes).Check(QStringLiteral("主流程")).isEmpty());
    QVERIFY(RpaProcessCheck(processes).Check(QStringLiteral("没有")).isEmpty());
}

void RpaProcessCheckTest::looksIntoTheProcessesThatAreRun()
{
    ProcessDataManager processes;
    processes.AddProcess(QStringLiteral("主流程"))->SetStatements({Run(QStringLiteral("子")), Log(readA)});
    processes.AddProcess(QStringLiteral("子"))->SetStatements({Set(a), Make("loop.break")});
    processes.AddProcess(QStringLiteral("别的"))->SetStatements({Make("no.such")});

    const QList<RpaCheckInfo> findings = RpaProcessCheck(processes).Check(QStringLiteral("主流程"));

    QCOMPARE(findings.size(), 1);
    QCOMPARE(findings.first().processName, QStringLiteral("子"));
    QCOMPARE(findings.first().rule, QStringLiteral("outside-loop"));
}

void RpaProcessCheckTest::looksForElementsOnlyWhenItKnowsThem()
{
    ProcessDataManager processes;
    processes.AddProcess(QStringLiteral("主流程"))
        ->SetStatements({Make("browser.click", {{QStringLiteral("element"), QStringLiteral("e1")}})});
    RpaProcessCheck check(processes);

    QVERIFY(check.Check(QStringLiteral("主流程")).isEmpty());
    check.SetElementIds({QStringLiteral("e2")});
    QCOMPARE(check.Check(QStringLiteral("主流程")).value(0).rule, QStringLiteral("missing-element"));
    check.SetElementIds({QStringLiteral("e1")});
    QVERIFY(check.Check(QStringLiteral("主流程")).isEmpty());
}

void RpaProcessCheckTest::findsReferencesToDisabledStatementsOfAllProcesses()
{
    ProcessDataManager processes;
    processes.AddProcess(QStringLiteral("甲"))->SetStatements({Disabled(Set(a)), Make("no.such")});
    processes.AddProcess(QStringLiteral("乙"))->SetStatements({Log(readA), Log(QStringLiteral("=never"))});

    const QList<RpaCheckInfo> findings = RpaProcessCheck(processes).CheckDisabledReferences();

    QCOMPARE(findings.size(), 1);
    QCOMPARE(findings.first().processName, QStringLiteral("乙"));
    QCOMPARE(findings.first().rule, QStringLiteral("disabled-reference"));
}

void RpaProcessCheckTest::saysWhereAndWhatToDo()
{
    ProcessDataManager processes;
    RpaProcess* process = processes.AddProcess(QStringLiteral("主流程"));
    const QString id = process->Insert(QString(), -1, {Make("else")}).value(0);

    const RpaCheckInfo finding = RpaProcessCheck(processes).Check(QStringLiteral("主流程")).value(0);

    QCOMPARE(finding.processName, QStringLiteral("主流程"));
    QCOMPARE(finding.statementId, id);
    QCOMPARE(finding.message, QStringLiteral("“否则”前面缺少对应的步骤"));
    QCOMPARE(finding.remedy, QStringLiteral("请把它放在“如果”或“否则如果”的紧后面"));
}

void RpaProcessCheckTest::saysWhatItIsAbout_data()
{
    QTest::addColumn<QVector<RpaStatement>>("statements");
    QTest::addColumn<QString>("subject");

    const auto row = [](const char* name, const QVector<RpaStatement>& statements, const QString& subject) {
        QTest::newRow(name) << statements << subject;
    };
    const QString element = QStringLiteral("element");
    row("variable", {Log(readA)}, a);
    row("variable of a disabled statement", {Disabled(Set(a)), Log(readA)}, a);
    row("process", {Run(QStringLiteral("无"))}, QStringLiteral("无"));
    row("argument left out", {If(QString())}, QStringLiteral("condition"));
    row("argument", {If(QStringLiteral("(1"))}, QStringLiteral("condition"));
    row("element", {Make("browser.click", {{element, QStringLiteral("e1")}})}, element);
    row("the statement itself", {Make("else")}, QString());
}

void RpaProcessCheckTest::saysWhatItIsAbout()
{
    QFETCH(QVector<RpaStatement>, statements);
    QFETCH(QString, subject);
    ProcessDataManager processes;
    processes.AddProcess(QStringLiteral("主流程"))->SetStatements(statements);
    RpaProcessCheck check(processes);
    check.SetElementIds({});

    const QList<RpaCheckInfo> findings = check.Check(QStringLiteral("主流程"));

    QCOMPARE(findings.size(), 1);
    QCOMPARE(findings.first().subject, subject);
}

void RpaProcessCheckTest::copesWithProcessesThatRunEachOther()
{
    ProcessDataManager processes;
    processes.AddProcess(QStringLiteral("甲"))->SetStatements({Run(QStringLiteral("乙"))});
    processes.AddProcess(QStringLiteral("乙"))->SetStatements({Run(QStringLiteral("甲")), Make("no.such")});

    QCOMPARE(RpaProcessCheck(processes).Check(QStringLiteral("甲")).size(), 1);
}

QTEST_GUILESS_MAIN(RpaProcessCheckTest)
#include "tst_rpaprocesscheck.moc"
