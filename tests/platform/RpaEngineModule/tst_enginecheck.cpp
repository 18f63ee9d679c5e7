// SPDX-License-Identifier: Apache-2.0

#include <RpaEngineCore/IRpaDebugger.h>
#include <RpaEngineCore/IRpaLogManager.h>
#include <RpaEngineModule/RpaEngineModule.h>
#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaProcess.h>

#include <QSignalSpy>
#include <QtTest>

#include <memory>

namespace
{
const QString mainProcess = QStringLiteral("主流程");

RpaEngineModule* Engine()
{
    return RpaEngineModule::Instance();
}

QVector<RpaLogLine> LogLines()
{
    return Engine()->GetLogManager()->GetLogDataSource()->GetLines();
}

// A main process with one statement; returns the statement's id.
QString AddStatement(ProcessDataManager& processes, const QString& value)
{
    RpaStatement statement;
    statement.command = QStringLiteral("variable.set");
    statement.arguments = {{QStringLiteral("name"), QStringLiteral("甲")}, {QStringLiteral("value"), value}};
    return processes.AddProcess(mainProcess)->Insert(QString(), -1, {statement}).first();
}
} // namespace

class EngineCheckTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { Engine()->GetLogManager()->GetLogDataSource()->Initialize(); }
    void cleanup() { Engine()->SetProcessDataManager(nullptr); }

    void tellsThatNothingWasFound()
    {
        ProcessDataManager processes;
        AddStatement(processes, QStringLiteral("1"));
        Engine()->SetProcessDataManager(&processes);
        QSignalSpy told(Engine()->GetEngineDebugger(), &IRpaDebugger::SigCheckNode);

        QVERIFY(Engine()->Check(mainProcess));

        QCOMPARE(told.size(), 1);
        QVERIFY(told.at(0).at(0).value<QList<RpaCheckInfo>>().isEmpty());
        QVERIFY(LogLines().isEmpty());
    }

    void writesEveryFindingIntoTheLogBesideItsStatement()
    {
        ProcessDataManager processes;
        const QString id = AddStatement(processes, QStringLiteral("=没有定义"));
        Engine()->SetProcessDataManager(&processes);
        QSignalSpy told(Engine()->GetEngineDebugger(), &IRpaDebugger::SigCheckNode);

        QVERIFY(!Engine()->Check(mainProcess));

        const auto findings = told.at(0).at(0).value<QList<RpaCheckInfo>>();
        QCOMPARE(findings.size(), 1);
        QCOMPARE(LogLines().size(), 1);
        QCOMPARE(LogLines().first().statementId, id);
        QCOMPARE(LogLines().first().level, RpaLogLevel::Error);
        QVERIFY(LogLines().first().text.contains(findings.first().message));
        QVERIFY(LogLines().first().text.contains(findings.first().remedy));
    }

    void tellsTheNumberOfTheStatementAsTheEditorShowsIt()
    {
        ProcessDataManager processes;
        AddStatement(processes, QStringLiteral("1"));
        RpaStatement wrong;
        wrong.command = QStringLiteral("variable.set");
        wrong.arguments = {{QStringLiteral("name"), QStringLiteral("乙")},
                           {QStringLiteral("value"), QStringLiteral("=没有定义")}};
        processes.GetProcess(0)->Insert(QString(), -1, {wrong});
        Engine()->SetProcessDataManager(&processes);

        QVERIFY(!Engine()->Check(mainProcess));

        QCOMPARE(LogLines().size(), 1);
        QCOMPARE(LogLines().first().line, 2);
    }

    void hasNothingToCheckAfterTheAppIsGone()
    {
        auto processes = std::make_unique<ProcessDataManager>();
        AddStatement(*processes, QStringLiteral("1"));
        Engine()->SetProcessDataManager(processes.get());

        processes.reset();

        QVERIFY(!Engine()->Check(mainProcess));
        QCOMPARE(LogLines().size(), 1);
    }
};

QTEST_MAIN(EngineCheckTest)
#include "tst_enginecheck.moc"
