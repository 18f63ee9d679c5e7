// SPDX-License-Identifier: Apache-2.0

// The browser pane: shown beside the pages, folded to a strip, or popped out into a window of its own.
#include "RpaAppEditorMembers.h"
#include "RpaBrowserNaviWidget.h"
#include "ui_RpaAppEditorWidget.h"

#include <OxBase/DpiTool.h>
#include <RpaEditorManager/RpaAppEditorWidget.h>
#include <RpaEngineModule/RpaEngineModule.h>
#include <WbBaseUI/UIMain.h>
#include <WbBaseUI/UIUtils.h>
#include <WbBrowserLite/IBrowserBorderWindow.h>
#include <WbBrowserLite/IBrowserWidget.h>
#include <WbBrowserLite/WbBrowserLite.h>

#include <QHBoxLayout>
#include <QSplitter>

void RpaAppEditorWidget::InitBrowserWidget()
{
    QWidget* const pane = m->ui->widgetContainer;
    m->browser = WbBrowserLite::Instance()->CreateBrowserWidget(pane);
    if (!m->browser) {
        pane->hide(); // an empty pane would only take the pages' room
        return;
    }

    m->browserStrip = new RpaBrowserNaviWidget(pane);
    m->browserStrip->hide();
    m->browser->InitToolBar();
    m->browser->SetEmbedded(true);

    auto* layout = new QHBoxLayout(pane);
    layout->setSpacing(0);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m->browser);
    layout->addWidget(m->browserStrip);

    connect(m->browser, &IBrowserWidget::SigPopup, this, &RpaAppEditorWidget::SlotPopup);
    connect(m->browser, &IBrowserWidget::SigFold, this, &RpaAppEditorWidget::SlotFoldBrowser);
    connect(m->browserStrip, &RpaBrowserNaviWidget::SigUnfoldBrowser, this,
            &RpaAppEditorWidget::SlotUnfoldBrowser);
    RpaEngineModule::Instance()->SetBrowserEngine(m->browser->GetBrowserEngine());
}

void RpaAppEditorWidget::SlotFoldBrowser()
{
    if (m->poppedOut)
        return;
    m->paneShares = m->ui->splitter->sizes();
    m->browser->hide();
    m->browserStrip->show();

    QWidget* const pane = m->ui->widgetContainer;
    m->paneMinimumWidth = pane->minimumWidth();
    m->paneMaximumWidth = pane->maximumWidth();
    pane->setFixedWidth(m->browserStrip->width());
}

void RpaAppEditorWidget::SlotUnfoldBrowser()
{
    m->browserStrip->hide();
    m->browser->show();
    m->ui->widgetContainer->setMinimumWidth(m->paneMinimumWidth);
    m->ui->widgetContainer->setMaximumWidth(m->paneMaximumWidth);
    if (!m->paneShares.isEmpty())
        m->ui->splitter->setSizes(m->paneShares); // as wide as the author had it
}

void RpaAppEditorWidget::SlotPopup(bool popup)
{
    m->poppedOut = popup;
    if (!m->popOutWindow)
        m->popOutWindow.reset(WbBrowserLite::Instance()->CreateBrowserEmbed(nullptr));
    if (popup)
        PopOutBrowser();
    else
        DockBrowser();
}

void RpaAppEditorWidget::PopOutBrowser()
{
    QWidget* const pane = m->ui->widgetContainer;
    const int inset = DpiTool::ScaleDefault(20);
    const QRect inPane = pane->rect().adjusted(0, inset, 0, -inset);
    const QRect onScreen(pane->mapToGlobal(inPane.topLeft()), inPane.size());

    pane->hide();
    m->popOutWindow->SetTarget(nullptr, QRect());
    m->popOutWindow->SetContent(m->browser);
    m->popOutWindow->setGeometry(onScreen);
    m->popOutWindow->show();
    m->popOutWindow->raise();
}

void RpaAppEditorWidget::DockBrowser()
{
    QWidget* const pane = m->ui->widgetContainer;
    pane->show();
    pane->layout()->addWidget(m->browser);
    m->popOutWindow->hide();
    UIUtils::SetForeground(UIMain::Instance()->GetMainWidget(nullptr), true);
}
