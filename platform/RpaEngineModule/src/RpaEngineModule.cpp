// SPDX-License-Identifier: Apache-2.0

#include "RpaEngineModule_p.h"

#include <RpaProcessData/RpaProcess.h>
#include <RpaProcessData/RpaProcessCheck.h>

#include <QCoreApplication>
#include <QHash>
#include <QStringList>

namespace
{
QStringList IdsOf(const RpaHtmlNodeManager& elements)
{
    QStringList ids;
    const QVector<RpaNode> nodes = elements.GetNodes();
    for (const RpaNode& node : nodes)
        ids.append(node.id);
    return ids;
}

// The numbers of its statements, as the editor shows them.
QHash<QString, int> LinesOf(const RpaProcess* process)
{
    QHash<QString, int> lines;
    if (process)
        process->ForEach([&](const RpaStatementNode& node) { lines.insert(node.GetId(), lines.size() + 1); });
    return lines;
}
} // namespace

void RpaEngineModule::Private::Report(const QList<RpaCheckInfo>& findings)
{
    QString shown;
    QHash<QString, int> lines;
    for (const RpaCheckInfo& finding : findings) {
        if (finding.processName != shown) {
            shown = finding.processName;
            lines = LinesOf(processData.Get()->FindProcess(shown));
        }
        log.Append(RpaLogLevel::Error,
                   QStringLiteral("【%1】%2 %3").arg(finding.processName, finding.message, finding.remedy),
                   finding.statementId, lines.value(finding.statementId));
    }
}

RpaEngineModule* RpaEngineModule::Instance()
{
    static RpaEngineModule instance;
    return &instance;
}

RpaEngineModule::RpaEngineModule() : d(std::make_unique<Private>())
{
    // The engine outlives the application object, its child processes must not.
    qAddPostRoutine([] { Instance()->d->runner.Shutdown(); });
}

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

void RpaEngineModule::SetPackageFolders(const QStringList& folders)
{
    d->packageFolders = folders;
}

QStringList RpaEngineModule::GetPackageFolders() const
{
    return d->packageFolders;
}

void RpaEngineModule::SetPreparation(IRunPreparation* preparation)
{
    d->runner.SetPreparation(preparation);
}

void RpaEngineModule::SetWaiting(bool waits)
{
    d->runner.SetWaiting(waits);
    // Whoever waits may as well enter what would keep the run from starting in the end.
    if (waits && d->paramEngine.Get())
        d->paramEngine.Get()->DemandValues();
}

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
    if (d->runner.IsGivenUp(processName))
        return true; // nobody wants to know any more
    const ProcessDataManager* const processes = d->processData.Get();
    if (!processes) {
        d->log.Append(RpaLogLevel::Error, QStringLiteral("没有可检查的流程：%1").arg(processName), QString(),
                      0);
        return false;
    }

    RpaProcessCheck check(*processes);
    if (const RpaHtmlNodeManager* const elements = d->htmlNodes.Get())
        check.SetElementIds(IdsOf(*elements));
    const QList<RpaCheckInfo> findings = check.Check(processName);
    d->Report(findings);
    // An empty list, too: it takes the marks of the check before away.
    emit d->debugger.SigCheckNode(findings);
    return findings.isEmpty();
}

bool RpaEngineModule::Execute(const QString& processName)
{
    return d->runner.Execute(d->processData.Get(), processName, d->translator.GetTranslateStatements(),
                             d->GetRunParts());
}

bool RpaEngineModule::Terminate(const QString& processName)
{
    return d->runner.Terminate(processName);
}
