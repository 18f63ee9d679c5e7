// SPDX-License-Identifier: Apache-2.0

#include "RpaAppUIDesignWidget.h"

#include "AddUIWidget.h"
#include "RpaPageHint.h"

#include <OxBase/DpiTool.h>
#include <RpaAppData/RpaParamData.h>
#include <RpaAppData/RpaTableData.h>
#include <RpaAppData/RpaUIData.h>
#include <RpaAppData/RpaUIDataManager.h>
#include <RpaAppTool/IAppLogWidget.h>
#include <RpaAppTool/IAppParamWidget.h>
#include <RpaAppTool/IAppTableWidget.h>
#include <RpaAppTool/IAppToolWidget.h>
#include <RpaEngineCore/IRpaLogManager.h>
#include <RpaEngineCore/RpaProcessLifeCycleManager.h>
#include <RpaEngineModule/RpaEngineModule.h>
#include <RpaEngineModule/RpaProcessRelatedUIControler.h>
#include <RpaProcessData/ProcessDataManager.h>

#include <QHBoxLayout>
#include <QPointer>

namespace
{

constexpr int panelStretch = 3;
constexpr int pageStretch = 4;
constexpr int pageViewStretch = 4;
constexpr int logStretch = 1;

// Puts a created widget into its host, filling it.
void Fill(QWidget* host, QWidget* created)
{
    auto* layout = new QHBoxLayout(host);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    if (created)
        layout->addWidget(created);
}

} // namespace

RpaAppUIDesignWidget::RpaAppUIDesignWidget(QWidget* parent) : WbBaseWidget(parent)
{
    ui.setupUi(this);
    InitPageView();
    ui.space_widget->hide();
    ShareWidth();
    ui.splitterRight->setStretchFactor(0, pageViewStretch);
    ui.splitterRight->setStretchFactor(1, logStretch);
    AdjustForDpi();
    InitConnectSignals();
    DpiTool::Register(this);
    RpaProcessRelatedUIControler::Instance()->AddToControl(ui.editorWidget);
    RpaProcessRelatedUIControler::Instance()->AddToControl(ui.widgetTabBar);
    RpaProcessLifeCycleManager::Instance()->AddLifeCycle(this);
}

RpaAppUIDesignWidget::~RpaAppUIDesignWidget()
{
    RpaProcessLifeCycleManager::Instance()->RemoveLifeCycle(this);
    RpaProcessRelatedUIControler::Instance()->RemoveFromControl(ui.editorWidget);
    RpaProcessRelatedUIControler::Instance()->RemoveFromControl(ui.widgetTabBar);
    DpiTool::Unregister(this);
}

// Without sizes of its own the splitter would go by what the panels' tables would like to have.
void RpaAppUIDesignWidget::ShareWidth()
{
    ui.splitter->setStretchFactor(0, panelStretch);
    ui.splitter->setStretchFactor(1, pageStretch);
    ui.splitter->setSizes({width() * panelStretch, width() * pageStretch});
    ui.splitterRight->setSizes({height() * pageViewStretch, height() * logStretch});
}

void RpaAppUIDesignWidget::InitPageView()
{
    toolWidget = IAppToolWidget::CreateToolEditor(ui.widgetTool);
    Fill(ui.widgetTool, toolWidget);
    ui.widgetToolEditor->SetAppToolWidget(toolWidget);

    paramWidget = IAppParamWidget::CreateParamWidget(ui.widgetParam);
    Fill(ui.widgetParam, paramWidget);
    ui.widgetParamEditor->SetAppParamWidget(paramWidget);

    tableWidget = IAppTableWidget::CreateTableWidget(ui.widgetTable);
    Fill(ui.widgetTable, tableWidget);
    ui.widgetTableEditor->SetAppTableWidget(tableWidget);
    new RpaPageHint(QStringLiteral("使用者填写的内容会显示在这里。在左侧添加参数或表格列。"), ui.widgetTable,
                    {paramWidget, tableWidget});

    logWidget = IAppLogWidget::CreateDevelopLog(ui.widgetLog);
    Fill(ui.widgetLog, logWidget);
    if (logWidget)
        logWidget->SetLogDataSource(RpaEngineModule::Instance()->GetLogManager()->GetLogDataSource());
}

void RpaAppUIDesignWidget::InitConnectSignals()
{
    if (toolWidget) {
        connect(toolWidget, &IAppToolWidget::SigRunProcess, this, &RpaAppUIDesignWidget::SigRunProcess);
        connect(toolWidget, &IAppToolWidget::SigStopProcess, this, &RpaAppUIDesignWidget::SigStopProcess);
    }
    if (logWidget) {
        connect(logWidget, &IAppLogWidget::SigShowStatement, this, &RpaAppUIDesignWidget::SigShowStatement);
        connect(logWidget, &IAppLogWidget::SigShowLine, this, &RpaAppUIDesignWidget::SigShowLine);
    }
    connect(ui.widgetToolEditor, &AppToolEditorWidget::SigShrinkChanged, this,
            &RpaAppUIDesignWidget::SlotShrinkChanged);
    connect(ui.widgetParamEditor, &AppParamEditorWidget::SigShrinkChanged, this,
            &RpaAppUIDesignWidget::SlotShrinkChanged);
    connect(ui.widgetTableEditor, &AppTableEditorWidget::SigShrinkChanged, this,
            &RpaAppUIDesignWidget::SlotShrinkChanged);
    connect(ui.widgetTabBar, &RpaTabBar::SigTabChanged, this, &RpaAppUIDesignWidget::SlotTabChanged);
    connect(ui.widgetTabBar, &RpaTabBar::SigAddTab, this, &RpaAppUIDesignWidget::SlotAddUI);
    connect(ui.widgetTabBar, &RpaTabBar::SigDeleteTab, this, &RpaAppUIDesignWidget::SlotDeleteUI);
    connect(ui.widgetTabBar, &RpaTabBar::SigRenameTab, this, &RpaAppUIDesignWidget::SlotRenameUI);
    connect(ui.widgetTabBar, &RpaTabBar::SigTabMoved, this, &RpaAppUIDesignWidget::SlotMoveUI);
}

void RpaAppUIDesignWidget::AdjustForDpi()
{
    const int side = DpiTool::ScaleDefault(4);
    ui.verticalLayout->setContentsMargins(side, 0, side, 0);
    ui.verticalLayout->setSpacing(DpiTool::ScaleDefault(8));
    ui.verticalLayout_2->setSpacing(DpiTool::ScaleDefault(10));
    ui.widgetLog->layout()->setContentsMargins(side, 0, side, 0);
}

void RpaAppUIDesignWidget::SetRpaAppData(const RpaAppDataPtr& app)
{
    appData = app;
    if (GetUIDataManager()->GetCount() == 0)
        return;
    ui.widgetToolEditor->SetAppDataPtr(app);
    ui.widgetParamEditor->SetAppDataPtr(app);
    ui.widgetTableEditor->SetAppDataPtr(app);
    ActivatePage(0);
    QStringList names;
    GetUIDataManager()->GetAllUIName(names);
    ui.widgetTabBar->Initialize(names);
}

void RpaAppUIDesignWidget::ActivatePage(int index)
{
    GetUIDataManager()->SetIndexActive(index);
    const RpaUIData* page = GetUIDataManager()->GetUIData(index);
    if (!page)
        return; // a tab of the app before, left there by an app without pages
    ui.widgetToolEditor->Init(page->GetToolData());
    toolWidget->SetToolData(page->GetToolData());
    ui.widgetParamEditor->Init(page->GetParamData());
    paramWidget->SetParamData(page->GetParamData());
    ui.widgetTableEditor->Init(page->GetTableData());
    tableWidget->SetTableData(page->GetTableData());
}

RpaUIDataManager* RpaAppUIDesignWidget::GetUIDataManager() const
{
    return appData->GetUIDataManager();
}

IAppParamEngine* RpaAppUIDesignWidget::GetAppParamEngine() const
{
    return paramWidget;
}

IAppTableEngine* RpaAppUIDesignWidget::GetAppTableEngine() const
{
    return tableWidget;
}

// The author does not change the table while a process fills it.
void RpaAppUIDesignWidget::ProcessStart(const QString&)
{
    if (tableWidget)
        tableWidget->SetUserEditable(false);
}

void RpaAppUIDesignWidget::ProcessFinish(const QString&)
{
    if (tableWidget)
        tableWidget->SetUserEditable(true);
}

void RpaAppUIDesignWidget::SlotShrinkChanged()
{
    const bool allShrunk = ui.widgetToolEditor->IsShrink() && ui.widgetParamEditor->IsShrink() &&
                           ui.widgetTableEditor->IsShrink();
    ui.space_widget->setVisible(allShrunk);
}

void RpaAppUIDesignWidget::SlotTabChanged(int index)
{
    if (GetUIDataManager()->GetIndexActive() != index)
        ActivatePage(index);
}

void RpaAppUIDesignWidget::SlotAddUI()
{
    if (!appData)
        return; // the bar is there before any app is
    // While the dialog is open the page may be closed, or shown another app; the dialog's list lives as long
    // as the app that is held here.
    const QPointer<RpaAppUIDesignWidget> self(this);
    const RpaAppDataPtr app = appData;
    auto* dialog = new AddUIWidget(nullptr);
    dialog->SetUIDataManager(GetUIDataManager());
    const bool accepted = dialog->exec() == QDialog::Accepted;
    dialog->deleteLater();
    if (!accepted || !self || appData != app)
        return;
    const QString name = dialog->GetName();
    RpaToolItem item;
    item.text = QStringLiteral("开始");
    item.processName = appData->GetProcessDataManager()->GetProcessNameFirst();
    const bool isFirst = GetUIDataManager()->GetCount() == 0;
    GetUIDataManager()->AddUIData(name, item);
    ui.widgetTabBar->AddTab(name);
    if (isFirst) {
        // Only now is there anything to show of this app; panels and tabs may be those of the app before.
        SetRpaAppData(appData);
    }
    appData->SetModified(true);
}

void RpaAppUIDesignWidget::SlotDeleteUI(int index)
{
    ui.widgetTabBar->RemoveTab(index);
    GetUIDataManager()->DeleteUIData(index);
    GetUIDataManager()->SetIndexActive(ui.widgetTabBar->GetCurrentIndex());
    appData->SetModified(true);
}

void RpaAppUIDesignWidget::SlotRenameUI(int index)
{
    const QPointer<RpaAppUIDesignWidget> self(this);
    const RpaAppDataPtr app = appData;
    const QString oldName = GetUIDataManager()->GetUIName(index);
    auto* dialog = new AddUIWidget(nullptr);
    dialog->SetUIDataManager(GetUIDataManager());
    dialog->SetName(oldName);
    dialog->SetIndex(index);
    dialog->SetRenameMode(true);
    const bool accepted = dialog->exec() == QDialog::Accepted;
    dialog->deleteLater();
    if (!accepted || !self || appData != app)
        return;
    const QString name = dialog->GetName();
    if (name == oldName)
        return;
    GetUIDataManager()->UpdateUIData(index, name);
    ui.widgetTabBar->SetTabText(index, name);
    appData->SetModified(true);
}

void RpaAppUIDesignWidget::SlotMoveUI(int from, int to)
{
    ui.widgetTabBar->SwapTab(from, to);
    GetUIDataManager()->SwapUIData(from, to);
    GetUIDataManager()->SetIndexActive(ui.widgetTabBar->GetCurrentIndex());
    appData->SetModified(true);
}
