#include "RpaAppUIDesignWidget.h"

#include "AddUIWidget.h"
#include "RunLogView.h"
#include "UIPagePreview.h"
#include "ui_RpaAppUIDesignWidget.h"

#include <OxBase/DpiTool.h>
#include <RpaAppData/RpaParamData.h>
#include <RpaAppData/RpaTableData.h>
#include <RpaAppData/RpaUIData.h>
#include <RpaAppData/RpaUIDataManager.h>
#include <RpaEngineCore/RpaProcessLifeCycleManager.h>
#include <RpaEngineModule/RpaEngineModule.h>
#include <RpaEngineModule/RpaProcessRelatedUIControler.h>
#include <RpaProcessData/ProcessDataManager.h>

#include <QHBoxLayout>
#include <QPointer>

namespace
{

constexpr int pageViewStretch = 4;
constexpr int logStretch = 1;

QStringList ToolLines(const RpaToolData& tools)
{
    QStringList lines;
    for (const RpaToolItem& item : tools.GetItems()) {
        lines.append(QStringLiteral("%1 → %2").arg(item.text, item.processName));
    }
    return lines;
}

QStringList ParamLines(const RpaParamData& params)
{
    QStringList lines;
    for (const RpaParamItem& item : params.GetItems()) {
        lines.append(QStringLiteral("%1（%2）").arg(item.name, RpaParamItem::GetTypeTitle(item.type)));
    }
    return lines;
}

QStringList ColumnLines(const RpaTableData& table)
{
    QStringList lines;
    for (const RpaTableColumn& column : table.GetColumns()) {
        lines.append(QStringLiteral("%1（%2）").arg(column.name, RpaTableColumn::GetTypeTitle(column.type)));
    }
    return lines;
}

} // namespace

RpaAppUIDesignWidget::RpaAppUIDesignWidget(QWidget* parent)
    : WbBaseWidget(parent), ui(std::make_unique<Ui::RpaAppUIDesignWidget>())
{
    ui->setupUi(this);
    InitPageView();
    ui->space_widget->hide();
    ui->splitterRight->setStretchFactor(0, pageViewStretch);
    ui->splitterRight->setStretchFactor(1, logStretch);
    AdjustForDpi();
    InitConnectSignals();
    DpiTool::Register(this);
    RpaProcessRelatedUIControler::Instance()->AddToControl(ui->editorWidget);
    RpaProcessRelatedUIControler::Instance()->AddToControl(ui->widgetTabBar);
    RpaProcessLifeCycleManager::Instance()->AddLifeCycle(this);
}

RpaAppUIDesignWidget::~RpaAppUIDesignWidget()
{
    RpaProcessLifeCycleManager::Instance()->RemoveLifeCycle(this);
    RpaProcessRelatedUIControler::Instance()->RemoveFromControl(ui->editorWidget);
    RpaProcessRelatedUIControler::Instance()->RemoveFromControl(ui->widgetTabBar);
    DpiTool::Unregister(this);
}

void RpaAppUIDesignWidget::InitPageView()
{
    ui->widgetToolEditor->SetTexts(QStringLiteral("工具"), QStringLiteral("本界面还没有工具"));
    ui->widgetParamEditor->SetTexts(QStringLiteral("参数"), QStringLiteral("本界面还没有参数"));
    ui->widgetTableEditor->SetTexts(QStringLiteral("表格"), QStringLiteral("本界面还没有表格列"));
    preview = new UIPagePreview(ui->widgetTool, ui->widgetParam, ui->widgetTable, this);
    logView = new RunLogView(ui->widgetLog);
    auto* layoutLog = new QHBoxLayout(ui->widgetLog);
    layoutLog->setSpacing(0);
    layoutLog->addWidget(logView);
    logView->SetSource(RpaEngineModule::Instance()->GetLogManager());
}

void RpaAppUIDesignWidget::InitConnectSignals()
{
    connect(preview, &UIPagePreview::SigRunProcess, this, &RpaAppUIDesignWidget::SigRunProcess);
    for (UIPartPanel* panel : {ui->widgetToolEditor, ui->widgetParamEditor, ui->widgetTableEditor}) {
        connect(panel, &UIPartPanel::SigShrinkChanged, this, &RpaAppUIDesignWidget::SlotShrinkChanged);
    }
    connect(ui->widgetTabBar, &RpaTabBar::SigTabChanged, this, &RpaAppUIDesignWidget::SlotTabChanged);
    connect(ui->widgetTabBar, &RpaTabBar::SigAddTab, this, &RpaAppUIDesignWidget::SlotAddUI);
    connect(ui->widgetTabBar, &RpaTabBar::SigDeleteTab, this, &RpaAppUIDesignWidget::SlotDeleteUI);
    connect(ui->widgetTabBar, &RpaTabBar::SigRenameTab, this, &RpaAppUIDesignWidget::SlotRenameUI);
    connect(ui->widgetTabBar, &RpaTabBar::SigTabMoved, this, &RpaAppUIDesignWidget::SlotMoveUI);
}

void RpaAppUIDesignWidget::AdjustForDpi()
{
    const int side = DpiTool::ScaleDefault(4);
    ui->verticalLayout->setContentsMargins(side, 0, side, 0);
    ui->verticalLayout->setSpacing(DpiTool::ScaleDefault(8));
    ui->verticalLayout_2->setSpacing(DpiTool::ScaleDefault(10));
    ui->widgetLog->layout()->setContentsMargins(side, 0, side, 0);
}

void RpaAppUIDesignWidget::SetRpaAppData(const RpaAppDataPtr& app)
{
    if (appData) {
        disconnect(GetUIDataManager(), nullptr, this, nullptr);
    }
    appData = app;
    if (GetUIDataManager()->GetCount() == 0) {
        return;
    }
    // What the panels show is read from the page; they follow it when it changes or another one becomes
    // active.
    connect(GetUIDataManager(), &RpaUIDataManager::SigChanged, this, &RpaAppUIDesignWidget::ShowActivePage);
    ActivatePage(0);
    QStringList names;
    GetUIDataManager()->GetAllUIName(names);
    ui->widgetTabBar->Initialize(names);
}

void RpaAppUIDesignWidget::ActivatePage(int index)
{
    GetUIDataManager()->SetIndexActive(index);
    ShowActivePage();
}

void RpaAppUIDesignWidget::ShowActivePage()
{
    const RpaUIData* page = GetUIDataManager()->GetUIData(GetUIDataManager()->GetIndexActive());
    ui->widgetToolEditor->SetLines(page ? ToolLines(*page->GetToolData()) : QStringList());
    ui->widgetParamEditor->SetLines(page ? ParamLines(*page->GetParamData()) : QStringList());
    ui->widgetTableEditor->SetLines(page ? ColumnLines(*page->GetTableData()) : QStringList());
    preview->Show(page);
}

RpaUIDataManager* RpaAppUIDesignWidget::GetUIDataManager() const
{
    return appData->GetUIDataManager();
}

IAppParamEngine* RpaAppUIDesignWidget::GetAppParamEngine() const
{
    return nullptr;
}

IAppTableEngine* RpaAppUIDesignWidget::GetAppTableEngine() const
{
    return nullptr;
}

void RpaAppUIDesignWidget::SlotShrinkChanged()
{
    const bool allShrunk = ui->widgetToolEditor->IsShrink() && ui->widgetParamEditor->IsShrink() &&
                           ui->widgetTableEditor->IsShrink();
    ui->space_widget->setVisible(allShrunk);
}

void RpaAppUIDesignWidget::SlotTabChanged(int index)
{
    if (GetUIDataManager()->GetIndexActive() != index) {
        ActivatePage(index);
    }
}

void RpaAppUIDesignWidget::SlotAddUI()
{
    // While the dialog is open the page may be closed, or shown another app; the dialog's list lives as long
    // as the app that is held here.
    const QPointer<RpaAppUIDesignWidget> self(this);
    const RpaAppDataPtr app = appData;
    auto* dialog = new AddUIWidget(nullptr);
    dialog->SetUIDataManager(GetUIDataManager());
    const bool accepted = dialog->exec() == QDialog::Accepted;
    dialog->deleteLater();
    if (!accepted || !self || appData != app) {
        return;
    }
    const QString name = dialog->GetName();
    RpaToolItem item;
    item.text = QStringLiteral("开始");
    item.processName = appData->GetProcessDataManager()->GetProcessNameFirst();
    GetUIDataManager()->AddUIData(name, item);
    ui->widgetTabBar->AddTab(name);
    appData->SetModified(true);
}

void RpaAppUIDesignWidget::SlotDeleteUI(int index)
{
    ui->widgetTabBar->RemoveTab(index);
    GetUIDataManager()->DeleteUIData(index);
    GetUIDataManager()->SetIndexActive(ui->widgetTabBar->GetCurrentIndex());
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
    if (!accepted || !self || appData != app) {
        return;
    }
    const QString name = dialog->GetName();
    if (name == oldName) {
        return;
    }
    GetUIDataManager()->UpdateUIData(index, name);
    ui->widgetTabBar->SetTabText(index, name);
    appData->SetModified(true);
}

void RpaAppUIDesignWidget::SlotMoveUI(int from, int to)
{
    ui->widgetTabBar->SwapTab(from, to);
    GetUIDataManager()->SwapUIData(from, to);
    GetUIDataManager()->SetIndexActive(ui->widgetTabBar->GetCurrentIndex());
    appData->SetModified(true);
}
