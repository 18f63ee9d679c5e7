#include "RpaEngineModule_p.h"

RpaEngineModule* RpaEngineModule::Instance()
{
    static RpaEngineModule instance;
    return &instance;
}

RpaEngineModule::RpaEngineModule() : d(std::make_unique<Private>()) {}

RpaEngineModule::~RpaEngineModule() = default;

void RpaEngineModule::SetBrowserEngine(IBrowserEngine* engine)
{
    d->browserEngine = engine;
}

void RpaEngineModule::SetAppParamEngine(IAppParamEngine* engine)
{
    d->paramEngine = engine;
}

void RpaEngineModule::SetAppTableEngine(IAppTableEngine* engine)
{
    d->tableEngine = engine;
}

void RpaEngineModule::SetHtmlNodeManager(RpaHtmlNodeManager* manager)
{
    d->htmlNodes = manager;
}

void RpaEngineModule::SetUiaNodeManager(RpaUiaNodeManager* manager)
{
    d->uiaNodes = manager;
}

void RpaEngineModule::SetProcessDataManager(ProcessDataManager* manager)
{
    d->processData = manager;
}

void RpaEngineModule::SetAppRunTimeInfo(RpaAppRunTimeInfo* info)
{
    d->runTimeInfo = info;
}

IRpaTranslator* RpaEngineModule::GetTranslator() const
{
    return &d->translator;
}

IRpaDebugger* RpaEngineModule::GetEngineDebugger() const
{
    return &d->debugger;
}

IRpaLogManager* RpaEngineModule::GetLogManager() const
{
    return &d->log;
}

bool RpaEngineModule::Check(const QString& processName)
{
    if (!d->processData) {
        d->log.Append(RpaLogLevel::Error, QStringLiteral("没有可检查的流程：%1").arg(processName), QString());
        return false;
    }
    emit d->debugger.SigCheckNode({});
    return true;
}

bool RpaEngineModule::Execute(const QString& processName)
{
    d->log.Append(RpaLogLevel::Error,
                  QStringLiteral("此版本的执行引擎尚不能运行流程，流程“%1”没有启动").arg(processName),
                  QString());
    return false;
}

bool RpaEngineModule::Terminate(const QString&)
{
    // Nothing can run yet, so nothing can be stopped.
    return false;
}
