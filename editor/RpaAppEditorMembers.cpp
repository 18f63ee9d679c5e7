// SPDX-License-Identifier: Apache-2.0

#include "RpaAppEditorMembers.h"

#include "ui_RpaAppEditorWidget.h"

#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaProcess.h>
#include <RpaProcessEditor/ProcessProgramEditorWidget.h>
#include <RpaProcessEditor/ProcessVisualEditorWidget.h>
#include <WbBaseUI/WbToast.h>
#include <WbBrowserLite/IBrowserBorderWindow.h>

RpaAppEditorMembers::RpaAppEditorMembers() : ui(std::make_unique<Ui::RpaAppEditorWidget>()), handle(nullptr)
{
}

RpaAppEditorMembers::~RpaAppEditorMembers() = default;

void RpaAppEditorMembers::ShowStatement(const QString& statementId)
{
    if (!visualEditor || !appData)
        return;
    const ProcessDataManager* processes = appData->GetProcessDataManager();
    const QStringList names = processes->GetProcessNames();
    const auto holder = std::find_if(names.begin(), names.end(), [&](const QString& name) {
        return processes->FindProcess(name)->Find(statementId);
    });
    if (holder == names.end()) {
        WbToast::Show(QStringLiteral("这条日志的语句已不在流程中"), ToastInformation);
        return;
    }
    ShowProcessPage();
    visualEditor->ShowStatement(*holder, statementId);
}

void RpaAppEditorMembers::ShowLine(int line)
{
    if (!programEditor || !appData)
        return;
    ShowProcessPage();
    programEditor->ShowLine(line);
}

void RpaAppEditorMembers::ShowProcessPage()
{
    ui->widgetNavigate->PickProcessPage();
    ui->widgetNavigate->window()->activateWindow();
}
