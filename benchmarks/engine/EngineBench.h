// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaEngineCore/IAppParamEngine.h>
#include <RpaEngineCore/IProcessLifeCycle.h>
#include <RpaEngineCore/IRpaLogManager.h>
#include <RpaEngineCore/IRpaTranslator.h>
#include <RpaEngineCore/RpaProcessLifeCycleManager.h>
#include <RpaEngineModule/RpaEngineModule.h>
#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaProcess.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>

#include <algorithm>
#include <functional>
#include <vector>

// The engine with an app of one process, whose page has the parameter "a".
class EngineBench : public IProcessLifeCycle, public IAppParamEngine
{
public:
    EngineBench()
    {
        processes.AddProcess(name);
        Engine()->SetProcessDataManager(&processes);
        Engine()->SetAppParamEngine(this);
        RpaProcessLifeCycleManager::Instance()->AddLifeCycle(this);
    }
    ~EngineBench() override
    {
        RpaProcessLifeCycleManager::Instance()->RemoveLifeCycle(this);
        Engine()->SetAppParamEngine(nullptr);
        Engine()->SetProcessDataManager(nullptr);
    }

    static RpaEngineModule* Engine() { return RpaEngineModule::Instance(); }
    static IRpaLogDataSource* Log() { return Engine()->GetLogManager()->GetLogDataSource(); }

    bool RunText(const QString& program)
    {
        processes.FindProcess(name)->SetProgramText(program);
        return Run(false);
    }
    bool RunStatements(const QVector<RpaStatement>& statements)
    {
        processes.FindProcess(name)->SetStatements(statements);
        return Run(true);
    }

    // Lets the application work until the run is over.
    void WaitForEnd()
    {
        while (running)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    // Lets the application work for a while: the child that is kept ready starts meanwhile.
    static void Idle(int milliseconds)
    {
        QElapsedTimer clock;
        clock.start();
        while (clock.elapsed() < milliseconds)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    }

    // The number behind a word that the program logged; 0 when it logged none.
    static double NumberAfter(const QString& word)
    {
        const QVector<RpaLogLine> lines = Log()->GetLines();
        for (const RpaLogLine& line : lines)
            if (line.text.startsWith(word))
                return line.text.mid(word.size()).toDouble();
        return 0;
    }
    static double Median(std::vector<double> values)
    {
        std::sort(values.begin(), values.end());
        return values.empty() ? 0 : values[values.size() / 2];
    }

    QStringList GetParamNames() const override { return {QStringLiteral("a")}; }
    QVariant GetParam(const QString&) const override
    {
        if (onParam)
            onParam();
        return QStringLiteral("value");
    }
    bool SetParam(const QString&, const QVariant&) override { return true; }
    void EngineReady() override {}
    void EngineRelease() override { running = false; }
    void AppLoaded(const QString&) override {}
    void ProcessStart(const QString&) override {}
    void ProcessFinish(const QString&) override {}
    void ProcessTerminate(const QString&) override {}
    void ApiExecute(const QString&) override {}

    std::function<void()> onParam;

private:
    bool Run(bool visual)
    {
        Log()->Initialize();
        Engine()->GetTranslator()->SetTranslateStatements(visual);
        running = Engine()->Execute(name);
        return running;
    }

    const QString name = QStringLiteral("主流程");
    ProcessDataManager processes;
    bool running = false;
};
