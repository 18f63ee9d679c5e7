// SPDX-License-Identifier: Apache-2.0

// Running and stopping the process.
#include "RpaAppEditorMembers.h"
#include "ui_RpaAppEditorWidget.h"

#include <RpaAppData/RpaAppExtendInfo.h>
#include <RpaEditorManager/RpaAppEditorWidget.h>
#include <RpaEngineCore/IRpaDebugger.h>
#include <RpaEngineCore/IRpaTranslator.h>
#include <RpaEngineModule/RpaEngineModule.h>
#include <RpaEngineTool/IRpaInspector.h>
#include <RpaEngineTool/RpaEngineTool.h>
#include <RpaPackage/IPackageService.h>
#include <RpaPackage/RpaPackageModule.h>
#include <RpaProcessEditor/ProcessVisualEditorWidget.h>
#include <WbBaseUI/WbToast.h>
#include <WbBrowserLite/IBrowserWidget.h>

void RpaAppEditorWidget::SlotRunProcess(const QString& processName)
{
    UploadTesselExecute(processName);
    m->runningProcessName = processName;
    SetUpEngine();

    const bool visual = IsVisual();
    IRpaTranslator* const translator = RpaEngineModule::Instance()->GetTranslator();
    translator->SetTranslateStatements(visual);
    translator->SetReportStatements(visual);
    if (visual) {
        if (m->visualEditor)
            m->visualEditor->SwitchMainPage();
        InitVisiualPackage();
    }
    CheckPackage(visual);
}

void RpaAppEditorWidget::SlotStopProcess(const QString& processName)
{
    RpaEngineModule::Instance()->Terminate(processName);
}

void RpaAppEditorWidget::SetUpEngine()
{
    RpaEngineModule* const engine = RpaEngineModule::Instance();
    const RpaAppData* const appData = m->appData.data();
    engine->SetBrowserEngine(m->browser ? m->browser->GetBrowserEngine() : nullptr);
    engine->SetAppParamEngine(m->ui->pageUIDesign->GetAppParamEngine());
    engine->SetAppTableEngine(m->ui->pageUIDesign->GetAppTableEngine());
    engine->SetHtmlNodeManager(appData ? appData->GetHtmlNodeManager() : nullptr);
    engine->SetUiaNodeManager(appData ? appData->GetUiaNodeManager() : nullptr);
    engine->SetProcessDataManager(appData ? appData->GetProcessDataManager() : nullptr);
    engine->SetAppRunTimeInfo(appData ? appData->GetRunTimeInfo() : nullptr);
}

// The second half of a run, at once or after the packages were installed.
void RpaAppEditorWidget::SlotCheckPackageFinished()
{
    if (IPackageService* service = RpaPackageModule::Instance()->GetService()) {
        disconnect(service, &IPackageService::SigInstallFinished, this,
                   &RpaAppEditorWidget::SlotCheckPackageFinished);
    }
    if (m->runningProcessName.isEmpty())
        return;
    if (IsVisual() && !CheckVisualProcess())
        return;
    if (RpaEngineTool::Instance()->GetHtmlInspector()->IsCapturing()) {
        WbToast::Show(QStringLiteral("正在捕获节点，请先停止捕获再执行"), ToastError);
        return;
    }

    const bool started = RpaEngineModule::Instance()->Execute(m->runningProcessName);
    m->runningProcessName.clear();
    if (!started)
        WbToast::Show(QStringLiteral("执行流程失败"), ToastError);
}

bool RpaAppEditorWidget::CheckVisualProcess()
{
    RpaEngineModule* const engine = RpaEngineModule::Instance();
    QList<RpaCheckInfo> findings;
    if (CheckComment(findings)) {
        emit engine->GetEngineDebugger()->SigCheckNode(findings);
        WbToast::Show(QStringLiteral("节点数据引用异常，引用了已经注释的节点，详细信息在可视化页面中查看!"),
                      ToastError);
        return false;
    }
    if (!engine->Check(m->runningProcessName)) {
        WbToast::Show(QStringLiteral("节点数据异常，异常信息在【运行日志】或可视化页面中查看!"), ToastError);
        return false;
    }
    return true;
}

// True when an enabled statement refers to one that is commented out.
bool RpaAppEditorWidget::CheckComment(QList<RpaCheckInfo>& list)
{
    return m->visualEditor && m->visualEditor->CheckComment(list);
}

bool RpaAppEditorWidget::IsVisual() const
{
    return m->appData && m->appData->GetAppExtendInfo()->GetAppKind() == visualKind;
}
