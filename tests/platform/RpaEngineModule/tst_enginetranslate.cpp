// SPDX-License-Identifier: Apache-2.0

#include "EngineRunFixture.h"

#include <RpaEngineCore/IAppTableEngine.h>
#include <RpaEngineModule/RpaProcessPython.h>
#include <RpaProcessData/RpaCheckInfo.h>

#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

namespace
{

RpaStatement Statement(const char* command, const QMap<QString, QString>& arguments,
                       const QString& output = {})
{
    RpaStatement statement;
    statement.command = QLatin1String(command);
    statement.arguments = arguments;
    statement.output = output;
    return statement;
}

RpaStatement Log(const QString& text)
{
    return Statement("log",
                     {{QStringLiteral("text"), text}, {QStringLiteral("level"), QStringLiteral("info")}});
}

RpaStatement Set(const QString& name, const QString& value)
{
    return Statement("variable.set", {{QStringLiteral("name"), name}, {QStringLiteral("value"), value}});
}

} // namespace

// Visual processes, from their statements to what they do.
class EngineTranslate : public QObject
{
    Q_OBJECT

private slots:
    void statementsRunInOrder();
    void disabledStatementsLeaveNoTrace();
    void blocksAndBranchesNest();
    void literalTextIsNeverCode();
    void subProcessesShareVariables();
    void aFailureMarksItsStatement();
    void theLogNumbersTheStatementsAsTheEditorDoes();
    void aProgramTellsItsLines();
    void textOfSeveralLinesKeepsTheLineMap();
    void anUnknownCommandFailsWithItsName();
    void itsPythonTellsWhereEachLineIsFrom();
    void itsPythonIsAProgramOfItsOwn();
    void nothingHasNoPython();
};

void EngineTranslate::statementsRunInOrder()
{
    EngineRunFixture engine;

    QVERIFY(engine.RunStatements({Set(QStringLiteral("x"), QStringLiteral("=2")),
                                  Set(QStringLiteral("x"), QStringLiteral("=x * 21")),
                                  Log(QStringLiteral("=f'x is {x}'"))}));

    QVERIFY(engine.life.WaitUntilOver());
    QVERIFY2(EngineRunFixture::LogHas(QStringLiteral("x is 42")),
             qPrintable(EngineRunFixture::LogTexts().join(QLatin1Char('\n'))));
}

void EngineTranslate::disabledStatementsLeaveNoTrace()
{
    EngineRunFixture engine;
    RpaStatement disabled = Log(QStringLiteral("never"));
    disabled.enabled = false;
    RpaStatement block = Statement("if", {{QStringLiteral("condition"), QStringLiteral("True")}});
    block.children = {disabled};

    QVERIFY(engine.RunStatements({block, Log(QStringLiteral("after"))}));

    QVERIFY(engine.life.WaitUntilOver());
    QVERIFY(EngineRunFixture::LogHas(QStringLiteral("after")));
    QVERIFY(!EngineRunFixture::LogHas(QStringLiteral("never")));
    QVERIFY(EngineRunFixture::LogHas(QStringLiteral("运行完成")));
}

void EngineTranslate::blocksAndBranchesNest()
{
    EngineRunFixture engine;
    RpaStatement yes = Statement("if", {{QStringLiteral("condition"), QStringLiteral("n % 2 == 0")}});
    yes.children = {Log(QStringLiteral("=f'even {n}'"))};
    RpaStatement no = Statement("else", {});
    no.children = {Log(QStringLiteral("=f'odd {n}'"))};
    RpaStatement loop =
        Statement("loop.count", {{QStringLiteral("times"), QStringLiteral("3")}}, QStringLiteral("n"));
    loop.children = {yes, no};

    QVERIFY(engine.RunStatements({loop}));

    QVERIFY(engine.life.WaitUntilOver());
    QCOMPARE(EngineRunFixture::LogTexts().filter(QRegularExpression(QStringLiteral("^(even|odd)"))),
             (QStringList{QStringLiteral("odd 1"), QStringLiteral("even 2"), QStringLiteral("odd 3")}));
}

void EngineTranslate::literalTextIsNeverCode()
{
    EngineRunFixture engine;
    const QString hostile = QStringLiteral("'); import os; os._exit(7) #\\ ${text} \"\"\" 你好");

    QVERIFY(engine.RunStatements({Log(hostile)}));

    QVERIFY(engine.life.WaitUntilOver());
    QVERIFY2(EngineRunFixture::LogTexts().contains(hostile),
             qPrintable(EngineRunFixture::LogTexts().join(QLatin1Char('\n'))));
}

void EngineTranslate::subProcessesShareVariables()
{
    EngineRunFixture engine;
    engine.processes.AddProcess(QStringLiteral("子 流程"))
        ->SetStatements({Set(QStringLiteral("结果"), QStringLiteral("=输入 + 1"))});

    QVERIFY(engine.RunStatements(
        {Set(QStringLiteral("输入"), QStringLiteral("=41")),
         Statement("process.run", {{QStringLiteral("process"), QStringLiteral("子 流程")}}),
         Log(QStringLiteral("=f'结果 {结果}'"))}));

    QVERIFY(engine.life.WaitUntilOver());
    QVERIFY2(EngineRunFixture::LogHas(QStringLiteral("结果 42")),
             qPrintable(EngineRunFixture::LogTexts().join(QLatin1Char('\n'))));
}

void EngineTranslate::aFailureMarksItsStatement()
{
    EngineRunFixture engine;
    QSignalSpy marks(engine.Engine()->GetEngineDebugger(), &IRpaDebugger::SigCheckNode);

    QVERIFY(
        engine.RunStatements({Log(QStringLiteral("a")), Set(QStringLiteral("x"), QStringLiteral("=1 / 0")),
                              Log(QStringLiteral("b"))}));

    QVERIFY(engine.life.WaitUntilOver());
    const auto findings = marks.last().first().value<QList<RpaCheckInfo>>();
    QCOMPARE(findings.size(), 1);
    QCOMPARE(findings.first().statementId,
             engine.processes.FindProcess(QStringLiteral("主流程"))->GetRoot()->GetChild(1)->GetId());
    QCOMPARE(findings.first().message, QStringLiteral("除数不能为零"));
    QVERIFY(!EngineRunFixture::LogTexts().contains(QStringLiteral("b")));
}

void EngineTranslate::theLogNumbersTheStatementsAsTheEditorDoes()
{
    EngineRunFixture engine;
    RpaStatement disabled = Log(QStringLiteral("b"));
    disabled.enabled = false;

    QVERIFY(engine.RunStatements({Log(QStringLiteral("a")), disabled, Log(QStringLiteral("c\nd"))}));

    QVERIFY(engine.life.WaitUntilOver());
    QMap<QString, int> numbers;
    const auto lines = EngineRunFixture::Source()->GetLines();
    for (const RpaLogLine& line : lines)
        numbers.insert(line.text, line.line);
    QCOMPARE(numbers.value(QStringLiteral("a"), -1), 1);
    QCOMPARE(numbers.value(QStringLiteral("c\nd"), -1), 3);
    QCOMPARE(numbers.value(QStringLiteral("流程“主流程”运行完成"), -1), 0);
}

void EngineTranslate::aProgramTellsItsLines()
{
    EngineRunFixture engine;
    QSignalSpy marks(engine.Engine()->GetEngineDebugger(), &IRpaDebugger::SigCheckNode);

    QVERIFY(engine.RunText(QStringLiteral("x = 1\nprint('hi')\n\nx / 0\n")));

    QVERIFY(engine.life.WaitUntilOver());
    const auto lines = EngineRunFixture::Source()->GetLines();
    const auto hi = std::find_if(lines.begin(), lines.end(),
                                 [](const RpaLogLine& line) { return line.text == QLatin1String("hi"); });
    QVERIFY(hi != lines.end());
    QCOMPARE(hi->line, 2);
    const auto findings = marks.last().first().value<QList<RpaCheckInfo>>();
    QCOMPARE(findings.size(), 1);
    QCOMPARE(findings.first().line, 4);
    QCOMPARE(findings.first().processName, QStringLiteral("主流程"));
    QCOMPARE(findings.first().statementId, QString());
    QCOMPARE(findings.first().message, QStringLiteral("除数不能为零"));
}

void EngineTranslate::textOfSeveralLinesKeepsTheLineMap()
{
    EngineRunFixture engine;
    QSignalSpy marks(engine.Engine()->GetEngineDebugger(), &IRpaDebugger::SigCheckNode);

    QVERIFY(engine.RunStatements({Log(QStringLiteral("one\ntwo\nthree")),
                                  Set(QStringLiteral("x"), QStringLiteral("=[1,\n2,\n3]")),
                                  Log(QStringLiteral("=missing"))}));

    QVERIFY(engine.life.WaitUntilOver());
    const auto findings = marks.last().first().value<QList<RpaCheckInfo>>();
    QCOMPARE(findings.size(), 1);
    QCOMPARE(findings.first().statementId,
             engine.processes.FindProcess(QStringLiteral("主流程"))->GetRoot()->GetChild(2)->GetId());
}

void EngineTranslate::anUnknownCommandFailsWithItsName()
{
    EngineRunFixture engine;

    QVERIFY(engine.RunStatements({Statement("future.command", {})}));

    QVERIFY(engine.life.WaitUntilOver());
    QVERIFY(EngineRunFixture::LogHas(QStringLiteral("不认识命令“future.command”")));
}

namespace
{
// What the lines that contain the text were made from, as "process/statement".
QStringList OriginsOf(const RpaProcessPython& python, const QString& text)
{
    const QStringList lines = python.source.split(QLatin1Char('\n'));
    QStringList found;
    for (int i = 0; i < python.origins.size(); ++i)
        if (lines.at(i).contains(text))
            found << python.origins.at(i).processName + QLatin1Char('/') + python.origins.at(i).statementId;
    return found;
}
} // namespace

void EngineTranslate::itsPythonTellsWhereEachLineIsFrom()
{
    ProcessDataManager processes;
    RpaStatement first = Log(QStringLiteral("first"));
    first.id = QStringLiteral("s1");
    RpaStatement off = Log(QStringLiteral("off"));
    off.enabled = false;
    RpaStatement run = Statement("process.run", {{QStringLiteral("process"), QStringLiteral("子流程")}});
    RpaStatement inner = Log(QStringLiteral("inner"));
    inner.id = QStringLiteral("s2");
    processes.AddProcess(QStringLiteral("主流程"))->SetStatements({first, off, run});
    processes.AddProcess(QStringLiteral("子流程"))->SetStatements({inner});
    processes.AddProcess(QStringLiteral("别的"))->SetStatements({Log(QStringLiteral("elsewhere"))});

    const RpaProcessPython python = RpaProcessPython::Of(processes, QStringLiteral("主流程"));

    QCOMPARE(python.origins.size(), python.source.count(QLatin1Char('\n')));
    QCOMPARE(OriginsOf(python, QStringLiteral("first")), QStringList(QStringLiteral("主流程/s1")));
    QCOMPARE(OriginsOf(python, QStringLiteral("inner")), QStringList(QStringLiteral("子流程/s2")));
    QCOMPARE(OriginsOf(python, QStringLiteral("# 子流程")), QStringList(QStringLiteral("子流程/")));
    QVERIFY(!python.source.contains(QStringLiteral("\"off\"")));
    QVERIFY(!python.source.contains(QStringLiteral("elsewhere")));
}

void EngineTranslate::itsPythonIsAProgramOfItsOwn()
{
    EngineRunFixture engine;
    ProcessDataManager visual;
    visual.AddProcess(QStringLiteral("统计"))
        ->SetStatements({Set(QStringLiteral("输入"), QStringLiteral("=40")),
                         Statement("process.run", {{QStringLiteral("process"), QStringLiteral("加二")}}),
                         Log(QStringLiteral("=f'结果 {输入}'"))});
    visual.AddProcess(QStringLiteral("加二"))
        ->SetStatements({Set(QStringLiteral("输入"), QStringLiteral("=输入 + 2"))});

    QVERIFY(engine.RunText(RpaProcessPython::Of(visual, QStringLiteral("统计")).source));

    QVERIFY(engine.life.WaitUntilOver());
    QVERIFY2(EngineRunFixture::LogHas(QStringLiteral("结果 42")),
             qPrintable(EngineRunFixture::LogTexts().join(QLatin1Char('\n'))));
}

void EngineTranslate::nothingHasNoPython()
{
    const ProcessDataManager processes;

    QVERIFY(RpaProcessPython::Of(processes, QStringLiteral("主流程")).source.isEmpty());
    QVERIFY(RpaProcessPython::Of(processes, QString()).origins.isEmpty());
}

QTEST_MAIN(EngineTranslate)

#include "tst_enginetranslate.moc"
