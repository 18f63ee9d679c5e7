// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaEngineCore/IProcessLifeCycle.h>
#include <RpaEngineCore/IRpaDebugger.h>
#include <RpaEngineCore/IRpaLogManager.h>
#include <RpaEngineCore/IRpaTranslator.h>
#include <RpaEngineCore/RpaProcessLifeCycleManager.h>
#include <RpaEngineModule/RpaEngineModule.h>
#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaProcess.h>

#include <QEventLoop>
#include <QStringList>
#include <QTimer>

// Writes down what the engine tells its listeners.
class RecordingLifeCycle : public IProcessLifeCycle
{
public:
    RecordingLifeCycle() { RpaProcessLifeCycleManager::Instance()->AddLifeCycle(this); }
    ~RecordingLifeCycle() override { RpaProcessLifeCycleManager::Instance()->RemoveLifeCycle(this); }

    void EngineReady() override { events << QStringLiteral("ready"); }
    void EngineRelease() override
    {
        events << QStringLiteral("release");
        loop.quit();
    }
    void AppLoaded(const QString&) override { events << QStringLiteral("loaded"); }
    void ProcessStart(const QString& name) override { events << QStringLiteral("start ") + name; }
    void ProcessFinish(const QString& name) override { events << QStringLiteral("finish ") + name; }
    void ProcessTerminate(const QString& name) override { events << QStringLiteral("terminate ") + name; }
    void ApiExecute(const QString& statementId) override { statements << statementId; }

    bool IsOver() const { return events.contains(QStringLiteral("release")); }

    // A real event loop: QTRY_VERIFY sleeps between its looks, and each of a run's calls would wait for that.
    bool WaitUntilOver(int patienceMs = 20000)
    {
        if (!IsOver()) {
            QTimer::singleShot(patienceMs, &loop, &QEventLoop::quit);
            loop.exec();
        }
        return IsOver();
    }

    QStringList events;
    QStringList statements;

private:
    QEventLoop loop;
};

// The engine with an app of one process, "主流程".
class EngineRunFixture
{
public:
    EngineRunFixture()
    {
        processes.AddProcess(QStringLiteral("主流程"));
        Engine()->SetProcessDataManager(&processes);
        Source()->Initialize();
    }
    ~EngineRunFixture()
    {
        Engine()->Terminate(QStringLiteral("主流程"));
        Engine()->SetProcessDataManager(nullptr);
        Engine()->SetAppParamEngine(nullptr);
        Engine()->SetAppTableEngine(nullptr);
    }

    static RpaEngineModule* Engine() { return RpaEngineModule::Instance(); }
    static IRpaLogDataSource* Source() { return Engine()->GetLogManager()->GetLogDataSource(); }

    bool RunText(const QString& program)
    {
        processes.FindProcess(QStringLiteral("主流程"))->SetProgramText(program);
        Engine()->GetTranslator()->SetTranslateStatements(false);
        return Engine()->Execute(QStringLiteral("主流程"));
    }

    bool RunStatements(const QVector<RpaStatement>& statements)
    {
        processes.FindProcess(QStringLiteral("主流程"))->SetStatements(statements);
        Engine()->GetTranslator()->SetTranslateStatements(true);
        return Engine()->Execute(QStringLiteral("主流程"));
    }

    static QStringList LogTexts()
    {
        QStringList texts;
        const QVector<RpaLogLine> lines = Source()->GetLines();
        for (const RpaLogLine& line : lines)
            texts << line.text;
        return texts;
    }

    static bool LogHas(const QString& part) { return !LogTexts().filter(part).isEmpty(); }

    ProcessDataManager processes;
    RecordingLifeCycle life;
};
