// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "CaptureFixture.h"

#include <RpaEngineCore/IProcessLifeCycle.h>
#include <RpaEngineCore/IRpaLogManager.h>
#include <RpaEngineCore/IRpaTranslator.h>
#include <RpaEngineCore/RpaProcessLifeCycleManager.h>
#include <RpaEngineModule/RpaEngineModule.h>
#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaProcess.h>

// A process that runs text against the author's browser; tells what it logged.
class BrowserProcess : public IProcessLifeCycle
{
public:
    explicit BrowserProcess(CaptureFixture& author)
    {
        RpaProcessLifeCycleManager::Instance()->AddLifeCycle(this);
        processes.AddProcess(mainName);
        Engine()->SetProcessDataManager(&processes);
        Engine()->SetHtmlNodeManager(&author.nodes);
        Engine()->SetBrowserEngine(author.browser->GetBrowserEngine());
        Engine()->GetLogManager()->GetLogDataSource()->Initialize();
    }
    ~BrowserProcess() override
    {
        Engine()->Terminate(mainName);
        Engine()->SetProcessDataManager(nullptr);
        Engine()->SetHtmlNodeManager(nullptr);
        Engine()->SetBrowserEngine(nullptr);
        RpaProcessLifeCycleManager::Instance()->RemoveLifeCycle(this);
    }

    QStringList RunText(const QString& program)
    {
        processes.FindProcess(mainName)->SetProgramText(program);
        Engine()->GetTranslator()->SetTranslateStatements(false);
        over = false;
        if (!Engine()->Execute(mainName) || !QTest::qWaitFor([this] { return over; }, 30000))
            return {QStringLiteral("did not run to its end")};
        QStringList texts;
        const QVector<RpaLogLine> lines = Engine()->GetLogManager()->GetLogDataSource()->GetLines();
        for (const RpaLogLine& line : lines)
            texts << line.text;
        return texts;
    }

    void EngineReady() override {}
    void EngineRelease() override { over = true; }
    void AppLoaded(const QString&) override {}
    void ProcessStart(const QString&) override {}
    void ProcessFinish(const QString&) override {}
    void ProcessTerminate(const QString&) override {}
    void ApiExecute(const QString&) override {}

private:
    static RpaEngineModule* Engine() { return RpaEngineModule::Instance(); }

    const QString mainName = QStringLiteral("主流程");
    ProcessDataManager processes;
    bool over = false;
};
