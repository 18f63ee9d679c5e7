// SPDX-License-Identifier: Apache-2.0

// Opening an app and making a model the current one.
#include "RpaAppEditorMembers.h"
#include "ui_RpaAppEditorWidget.h"

#include <OxBase/DpiTool.h>
#include <RpaAppData/RpaAppExtendInfo.h>
#include <RpaAppData/RpaAppRunTimeInfo.h>
#include <RpaCore/RpaGlobalDataManager.h>
#include <RpaEditorManager/RpaAppEditorWidget.h>
#include <RpaEngineCore/IRpaLogManager.h>
#include <RpaEngineModule/RpaEngineModule.h>
#include <RpaPackage/IPackageService.h>
#include <RpaPackage/RpaPackageModule.h>
#include <RpaProcessEditor/ProcessProgramEditorWidget.h>
#include <RpaProcessEditor/ProcessVisualEditorWidget.h>
#include <WbBrowserLite/IBrowserWidget.h>
#include <WbCore/WbGlobalData.h>

#include <QHBoxLayout>

void RpaAppEditorWidget::SetExecuteInfo(const RobotExecuteInfo& info)
{
    m->executeInfo = info;
    SetAppName(info.GetAppName());
    SetShare(info.GetCreator() != WbGlobalData::Instance()->GetPin());
    ShowExportBtn(RpaGlobalDataManager::Instance()->GetSuperAdmin());
    RequestSnapList(info.GetAppId());
}

void RpaAppEditorWidget::SlotRefresh()
{
    SetExecuteInfo(m->executeInfo);
}

void RpaAppEditorWidget::SetAppName(const QString& name)
{
    ElidedLabelEx* const label = m->ui->labelName;
    label->SetText(name, QString());
    // In a narrow editor the space beside the name goes before the name does.
    constexpr int usualWidth = 140;
    label->setMinimumWidth(qMin(label->sizeHint().width(), DpiTool::ScaleDefault(usualWidth)));
}

void RpaAppEditorWidget::ShowExportBtn(bool show)
{
    m->ui->pushButtonExportAppData->setVisible(show);
}

// An app that was shared with the user is released by its creator only.
void RpaAppEditorWidget::SetShare(bool share)
{
    m->ui->pushButtonBeta->setVisible(!share);
    m->ui->pushButtonPublish->setVisible(!share);
}

void RpaAppEditorWidget::SetAppData(const RpaAppDataPtr& appDataPtr)
{
    m->appData = appDataPtr;
    FillAppDataWithExecuteInfo();
    InitSnapshotCombo();
    InitProcessEditor();
    InitLogDataSource();
    UpdateAppData();
    if (m->browser)
        m->browser->Reset();
}

void RpaAppEditorWidget::FillAppDataWithExecuteInfo()
{
    RpaAppExtendInfo* const extendInfo = m->appData->GetAppExtendInfo();
    extendInfo->SetAppId(m->executeInfo.GetAppId());
    extendInfo->SetOxsAppKey(m->executeInfo.GetOxsAppKey());
    extendInfo->SetAppKind(m->executeInfo.GetAppKind());

    RpaAppRunTimeInfo* const runTimeInfo = m->appData->GetRunTimeInfo();
    runTimeInfo->SetAppId(m->executeInfo.GetAppId());
    runTimeInfo->SetOxsAppKey(m->executeInfo.GetOxsAppKey());
    runTimeInfo->SetEnvironment(QStringLiteral("develop"));
}

void RpaAppEditorWidget::InitProcessEditor()
{
    if (m->visualEditor || m->programEditor)
        return;

    // An app of an unknown kind leaves the layout without a widget; the next model finds it here.
    QWidget* const page = m->ui->pageProcess;
    auto* layout = page->layout() ? page->layout() : new QHBoxLayout(page);
    layout->setContentsMargins(0, 0, 0, 0);

    const int kind = m->appData->GetAppExtendInfo()->GetAppKind();
    if (kind == visualKind) {
        m->visualEditor = new ProcessVisualEditorWidget; // adopted by the layout
        connect(m->visualEditor, &ProcessVisualEditorWidget::SigSaveCode, this,
                &RpaAppEditorWidget::SlotSave);
        connect(m->visualEditor, &ProcessVisualEditorWidget::SigRunProcess, this,
                &RpaAppEditorWidget::SlotRunProcess);
        connect(m->visualEditor, &ProcessVisualEditorWidget::SigStopProcess, this,
                &RpaAppEditorWidget::SlotStopProcess);
        layout->addWidget(m->visualEditor);
    } else if (kind == programKind) {
        m->programEditor = new ProcessProgramEditorWidget; // adopted by the layout
        connect(m->programEditor, &ProcessProgramEditorWidget::SigSaveCode, this,
                &RpaAppEditorWidget::SlotSave);
        connect(m->programEditor, &ProcessProgramEditorWidget::SigRunProcess, this,
                &RpaAppEditorWidget::SlotRunProcess);
        connect(m->programEditor, &ProcessProgramEditorWidget::SigStopProcess, this,
                &RpaAppEditorWidget::SlotStopProcess);
        if (IPackageService* service = RpaPackageModule::Instance()->GetService()) {
            connect(service, &IPackageService::SigSaveConfig, this,
                    &RpaAppEditorWidget::SlotUpdatePackageInfo);
            ResetPackageInfo();
        }
        layout->addWidget(m->programEditor);
    }
}

void RpaAppEditorWidget::InitLogDataSource()
{
    if (IRpaLogDataSource* source = RpaEngineModule::Instance()->GetLogManager()->GetLogDataSource())
        source->Initialize();
}

void RpaAppEditorWidget::UpdateAppData()
{
    m->ui->pageUIDesign->SetRpaAppData(m->appData);
    m->ui->pageExtendInfo->SetRpaAppData(m->appData);
    if (m->visualEditor)
        m->visualEditor->SetRpaAppData(m->appData);
    if (m->programEditor)
        m->programEditor->SetRpaAppData(m->appData);
}
