// SPDX-License-Identifier: Apache-2.0

// How the editor is put together and taken apart.
#include "RpaAppEditorMembers.h"
#include "RpaAppNotify.h"
#include "ui_RpaAppEditorWidget.h"

#include <OxBase/DpiTool.h>
#include <RpaCore/RpaGlobalLifeCycle.h>
#include <RpaEditorManager/RpaAppEditorWidget.h>
#include <RpaEngineModule/RpaProcessRelatedUIControler.h>
#include <WbBrowserLite/IBrowserBorderWindow.h>
#include <WbBrowserLite/IBrowserWidget.h>

#include <QHideEvent>
#include <QShowEvent>
#include <QSplitter>

namespace
{
// The pages are what the author works on; the browser is pulled larger where a web page needs it.
void ShareWidth(QSplitter* splitter)
{
    constexpr int pages = 5;
    constexpr int browser = 2;
    constexpr int unit = 200; // only the ratio counts
    splitter->setStretchFactor(0, pages);
    splitter->setStretchFactor(1, browser);
    splitter->setSizes({pages * unit, browser * unit});
}
} // namespace

RpaAppEditorWidget::RpaAppEditorWidget(QWidget* parent)
    : WbBaseWidget(parent), m(std::make_unique<RpaAppEditorMembers>())
{
    m->ui->setupUi(this);
    m->ui->requestStatusWidget->AddSucceedWidget(m->ui->editorWidget);
    m->ui->splitter->setChildrenCollapsible(false);
    ShareWidth(m->ui->splitter);

    InitUIStyle();
    InitBrowserWidget();
    InitConnectSignals();
    InitTooltip();
    InitForDpi();

    setCursor(Qt::ArrowCursor);
    setFocusPolicy(Qt::ClickFocus);
    RpaProcessRelatedUIControler::Instance()->AddToControl(m->ui->version_combo);
    RpaGlobalLifeCycle::Instance()->AddLogic(this);
    DpiTool::Register(this);
}

RpaAppEditorWidget::~RpaAppEditorWidget()
{
    DpiTool::Unregister(this);
    RpaGlobalLifeCycle::Instance()->RemoveLogic(this);
    RpaProcessRelatedUIControler::Instance()->RemoveFromControl(m->ui->version_combo);

    // The pages outlive the members; nothing they emit on their way out may reach a slot any more.
    const QList<QObject*> senders = findChildren<QObject*>();
    for (QObject* sender : senders)
        sender->disconnect(this);
    if (m->browser)
        m->browser->disconnect(this);

    m->popOutWindow.reset();
    m->ui.reset();
}

void RpaAppEditorWidget::InitConnectSignals()
{
    const auto* ui = m->ui.get();
    const RpaAppEditorHandle* handle = &m->handle;
    using Self = RpaAppEditorWidget;

    connect(ui->requestStatusWidget, &RequestStatusBaseWidget::SigRefresh, this, &Self::SlotRefresh);
    connect(ui->pushButtonSave, &WbPushButton::clicked, this, &Self::SlotSave);
    connect(ui->pushButtonSaveAs, &WbPushButton::clicked, this, &Self::SlotSaveAs);
    connect(ui->pushButtonBeta, &WbPushButton::clicked, this, &Self::SlotBeta);
    connect(ui->pushButtonPublish, &WbPushButton::clicked, this, &Self::SlotPublish);
    connect(ui->version_combo, &RpaVersionCombo::SigSelectVersion, this, &Self::SlotSnapshotChanged);
    connect(ui->version_combo, &RpaVersionCombo::SigDeleteVersion, this, &Self::SlotSnapshotDelete);
    connect(RpaAppNotify::Instance(), &RpaAppNotify::SigEditorTabChanged, this, &Self::SlotTabChanged);
    connect(ui->pageUIDesign, &RpaAppUIDesignWidget::SigRunProcess, this, &Self::SlotRunProcess);
    connect(ui->pageUIDesign, &RpaAppUIDesignWidget::SigStopProcess, this, &Self::SlotStopProcess);
    connect(ui->pageUIDesign, &RpaAppUIDesignWidget::SigShowStatement, this,
            [this](const QString& statementId) { m->ShowStatement(statementId); });
    connect(ui->pageUIDesign, &RpaAppUIDesignWidget::SigShowLine, this,
            [this](int line) { m->ShowLine(line); });
    connect(handle, &RpaAppEditorHandle::SigSaveAppSnapshot, this, &Self::SlotSaveAppSnapshot);
    connect(handle, &RpaAppEditorHandle::SigGetSnapshotListFinished, this,
            &Self::SlotGetSnapshotListFinished);
    connect(handle, &RpaAppEditorHandle::SigGetSnapshotData, this, &Self::SlotGetSnapshotData);
    connect(handle, &RpaAppEditorHandle::SigGrayOrReleaseFinished, this, &Self::SlotGrayOrReleaseFinished);
    connect(handle, &RpaAppEditorHandle::SigSnapshotDeleted, this, &Self::SlotSnapshotDeleted);
    connect(ui->pushButtonExportAppData, &WbPushButton::clicked, this, &Self::SlotExportData);
}

void RpaAppEditorWidget::InitUIStyle()
{
    for (WbPushButton* button : {m->ui->pushButtonSave, m->ui->pushButtonSaveAs, m->ui->pushButtonBeta,
                                 m->ui->pushButtonPublish, m->ui->pushButtonExportAppData}) {
        button->SetBusiness(Wb::BaseUIBusiness::Editor);
        button->SetButtonType(Wb::SecondaryButton);
    }
    constexpr int usualNameLength = 14; // with the mark of a released version before it
    m->ui->version_combo->setMinimumContentsLength(usualNameLength);
}

void RpaAppEditorWidget::InitTooltip()
{
    m->ui->pushButtonBeta->setToolTip(QStringLiteral("灰度后可通过邀请码\n分享给使用者"));
    m->ui->pushButtonPublish->setToolTip(QStringLiteral("上线后应用所属类型\n范围内用户均可使用"));
}

void RpaAppEditorWidget::InitForDpi()
{
    auto* layout = m->ui->horizontalLayout;
    layout->setContentsMargins(DpiTool::ScaleDefault(12), 0, DpiTool::ScaleDefault(28), 0);
    layout->setSpacing(DpiTool::ScaleDefault(12));
    m->ui->horizontalSpacerSave->changeSize(DpiTool::ScaleDefault(16), 1, QSizePolicy::Fixed,
                                            QSizePolicy::Fixed);
    layout->invalidate();
}

void RpaAppEditorWidget::AdjustForDpi()
{
    InitForDpi();
}

void RpaAppEditorWidget::LifeCycleControllUI(bool control)
{
    auto* controler = RpaProcessRelatedUIControler::Instance();
    if (control)
        controler->AddToControl(m->ui->version_combo);
    else
        controler->RemoveFromControl(m->ui->version_combo);
}

void RpaAppEditorWidget::SlotTabChanged(int index)
{
    constexpr int usageInstructions = 2;
    if (index == usageInstructions) {
        m->ui->stackedWidgetTop->setCurrentIndex(1);
        return;
    }
    m->ui->stackedWidgetTop->setCurrentIndex(0);
    m->ui->stackedWidget->setCurrentIndex(index);
}

void RpaAppEditorWidget::showEvent(QShowEvent* event)
{
    if (m->poppedOut && m->popOutWindow)
        m->popOutWindow->show();
    WbBaseWidget::showEvent(event);
}

void RpaAppEditorWidget::hideEvent(QHideEvent* event)
{
    if (m->poppedOut && m->popOutWindow)
        m->popOutWindow->hide();
    WbBaseWidget::hideEvent(event);
}
