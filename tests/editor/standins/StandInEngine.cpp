// SPDX-License-Identifier: Apache-2.0

#include "StandInEngine.h"

#include "CallLog.h"

#include <RpaAppData/RpaAppRunTimeInfo.h>
#include <RpaEngineCore/IAppParamEngine.h>
#include <RpaEngineCore/IAppTableEngine.h>
#include <RpaEngineCore/IRpaDebugger.h>
#include <RpaEngineCore/IRpaLogManager.h>
#include <RpaEngineCore/IRpaTranslator.h>
#include <RpaEngineModule/RpaDebugSession.h>
#include <RpaEngineModule/RpaEngineModule.h>
#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaHtmlNodeManager.h>
#include <RpaProcessData/RpaUiaNodeManager.h>

namespace
{
bool checkResult = true;
bool executeResult = true;

void Note(const QString& what, const QString& value)
{
    CallLog::Note(QStringLiteral("%1: %2").arg(what, value));
}

QString NamesOf(const RpaNodeManager* nodes)
{
    QStringList names;
    if (nodes) {
        const QVector<RpaNode> all = nodes->GetNodes();
        for (const RpaNode& node : all)
            names.append(node.name);
    }
    return nodes ? names.join(QLatin1Char(' ')) : QStringLiteral("none");
}

class NotingLog : public IRpaLogDataSource
{
public:
    void Initialize() override { CallLog::Note(QStringLiteral("log emptied")); }
    QVector<RpaLogLine> GetLines() const override { return {}; }
};

class NotingLogManager : public IRpaLogManager
{
public:
    IRpaLogDataSource* GetLogDataSource() const override { return &source; }
    void Append(RpaLogLevel, const QString&, const QString&, int) override {}

private:
    mutable NotingLog source;
};

class NotingTranslator : public IRpaTranslator
{
public:
    void SetTranslateStatements(bool visual) override { NoteSwitch(QStringLiteral("translate"), visual); }
    void SetReportStatements(bool visual) override { NoteSwitch(QStringLiteral("report"), visual); }

private:
    static void NoteSwitch(const QString& name, bool on)
    {
        Note(name + QStringLiteral(" statements"), on ? QStringLiteral("yes") : QStringLiteral("no"));
    }
};
} // namespace

class RpaEngineModule::Private
{
public:
    NotingLogManager log;
    NotingTranslator translator;
    IRpaDebugger debugger;
    RpaDebugSession session;
};

RpaEngineModule::RpaEngineModule() : d(std::make_unique<Private>()) {}

RpaEngineModule::~RpaEngineModule() = default;

RpaEngineModule* RpaEngineModule::Instance()
{
    static RpaEngineModule instance;
    return &instance;
}

void RpaEngineModule::SetBrowserEngine(IBrowserEngine* engine)
{
    Note(QStringLiteral("browser"), engine ? QStringLiteral("some") : QStringLiteral("none"));
}

void RpaEngineModule::SetAppParamEngine(IAppParamEngine* engine)
{
    Note(QStringLiteral("params"),
         engine ? engine->GetParamNames().join(QLatin1Char(' ')) : QStringLiteral("none"));
}

void RpaEngineModule::SetAppTableEngine(IAppTableEngine* engine)
{
    Note(QStringLiteral("columns"),
         engine ? engine->GetColumnNames().join(QLatin1Char(' ')) : QStringLiteral("none"));
}

void RpaEngineModule::SetHtmlNodeManager(RpaHtmlNodeManager* manager)
{
    Note(QStringLiteral("elements"), NamesOf(manager));
}

void RpaEngineModule::SetUiaNodeManager(RpaUiaNodeManager* manager)
{
    Note(QStringLiteral("windows"), NamesOf(manager));
}

void RpaEngineModule::SetProcessDataManager(ProcessDataManager* manager)
{
    Note(QStringLiteral("processes"),
         manager ? manager->GetProcessNames().join(QLatin1Char(' ')) : QStringLiteral("none"));
}

void RpaEngineModule::SetAppRunTimeInfo(RpaAppRunTimeInfo* info)
{
    CallLog::Note(info ? QStringLiteral("run of %1 with %2 in %3")
                             .arg(info->GetAppId(), info->GetOxsAppKey(), info->GetEnvironment())
                       : QStringLiteral("run of none"));
}

void RpaEngineModule::SetPackageFolders(const QStringList&) {}

IRpaTranslator* RpaEngineModule::GetTranslator() const
{
    return &d->translator;
}

IRpaDebugger* RpaEngineModule::GetEngineDebugger() const
{
    return &d->debugger;
}

RpaDebugSession* RpaEngineModule::GetDebugSession() const
{
    return &d->session;
}

IRpaLogManager* RpaEngineModule::GetLogManager() const
{
    return &d->log;
}

bool RpaEngineModule::Check(const QString& processName)
{
    CallLog::Note(QStringLiteral("check ") + processName);
    return checkResult;
}

bool RpaEngineModule::Execute(const QString& processName)
{
    CallLog::Note(QStringLiteral("execute ") + processName);
    return executeResult;
}

bool RpaEngineModule::Terminate(const QString& processName)
{
    CallLog::Note(QStringLiteral("terminate ") + processName);
    return false;
}

void StandInEngine::Reset()
{
    checkResult = true;
    executeResult = true;
}

void StandInEngine::SetCheckResult(bool good)
{
    checkResult = good;
}

void StandInEngine::SetExecuteResult(bool started)
{
    executeResult = started;
}
