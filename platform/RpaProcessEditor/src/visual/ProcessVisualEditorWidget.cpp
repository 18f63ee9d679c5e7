// SPDX-License-Identifier: Apache-2.0

#include "VisualEditorParts_p.h"

#include <RpaAppData/RpaAppDataNotify.h>
#include <RpaEngineCore/IProcessLifeCycle.h>
#include <RpaEngineCore/IRpaDebugger.h>
#include <RpaEngineCore/RpaProcessLifeCycleManager.h>
#include <RpaEngineModule/RpaEngineModule.h>
#include <RpaProcessData/RpaProcessCheck.h>
#include <RpaProcessEditor/ProcessVisualEditorWidget.h>

class ProcessVisualEditorWidget::Private : public IProcessLifeCycle
{
public:
    explicit Private(ProcessVisualEditorWidget* editor) : parts(editor)
    {
        RpaProcessLifeCycleManager::Instance()->AddLifeCycle(this);
    }
    ~Private() override { RpaProcessLifeCycleManager::Instance()->RemoveLifeCycle(this); }

    void ApiExecute(const QString& statementId) override { parts.MarkRunning(statementId); }
    void EngineRelease() override { parts.MarkRunning(QString()); }

    VisualEditorParts parts;
};

ProcessVisualEditorWidget::ProcessVisualEditorWidget(QWidget* parent)
    : QWidget(parent), d(std::make_unique<Private>(this))
{
    connect(&d->parts, &VisualEditorParts::SigSaveAsked, this, &ProcessVisualEditorWidget::SigSaveCode);
    connect(&d->parts, &VisualEditorParts::SigRunAsked, this, &ProcessVisualEditorWidget::SigRunProcess);
    connect(&d->parts, &VisualEditorParts::SigStopAsked, this, &ProcessVisualEditorWidget::SigStopProcess);
    if (const IRpaDebugger* debugger = RpaEngineModule::Instance()->GetEngineDebugger())
        connect(debugger, &IRpaDebugger::SigCheckNode, this, &ProcessVisualEditorWidget::ShowCheckInfos);
}

ProcessVisualEditorWidget::~ProcessVisualEditorWidget() = default;

void ProcessVisualEditorWidget::SetRpaAppData(const RpaAppDataPtr& appData)
{
    d->parts.SetApp(appData);
    if (appData)
        emit RpaAppDataNotify::Instance()->SigShown(appData.data());
}

bool ProcessVisualEditorWidget::CheckComment(QList<RpaCheckInfo>& list) const
{
    list.clear();
    if (const RpaAppDataPtr app = d->parts.App())
        list = RpaProcessCheck(*app->GetProcessDataManager()).CheckDisabledReferences();
    return !list.isEmpty();
}

QString ProcessVisualEditorWidget::GetShownProcess() const
{
    return d->parts.ShownProcess();
}

void ProcessVisualEditorWidget::SwitchMainPage()
{
    d->parts.SwitchMainPage();
}

void ProcessVisualEditorWidget::ShowCheckInfos(const QList<RpaCheckInfo>& list)
{
    d->parts.ShowFindings(list);
}

bool ProcessVisualEditorWidget::MakeFix(const RpaProblem& problem)
{
    return d->parts.MakeFix(problem);
}

bool ProcessVisualEditorWidget::ShowStatement(const QString& processName, const QString& statementId)
{
    return d->parts.ShowStatement(processName, statementId);
}
