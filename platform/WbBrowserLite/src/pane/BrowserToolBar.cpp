// SPDX-License-Identifier: Apache-2.0

#include "BrowserToolBar_p.h"

#include <OxBase/DpiTool.h>
#include <WbBaseUI/WbIcons.h>

#include <QAction>

BrowserToolBar::BrowserToolBar(QWidget* parent) : QWidget(parent)
{
    ui.setupUi(this);
    setProperty("wbRole", QStringLiteral("toolbar"));
    setAttribute(Qt::WA_StyledBackground);
    Dress(ui.browserBack, QStringLiteral("back"), QStringLiteral("后退（Alt+←）"));
    Dress(ui.browserForward, QStringLiteral("forward"), QStringLiteral("前进（Alt+→）"));
    Dress(ui.browserFold, QStringLiteral("unfold"), QStringLiteral("折叠浏览器窗口"));
    ui.browserAddress->setMinimumWidth(DpiTool::ScaleDefault(80));

    connect(ui.browserBack, &QToolButton::clicked, this, &BrowserToolBar::SigBack);
    connect(ui.browserForward, &QToolButton::clicked, this, &BrowserToolBar::SigForward);
    connect(ui.browserReload, &QToolButton::clicked, this,
            [this] { loading ? emit SigStop() : emit SigReload(); });
    connect(ui.browserAddress, &QLineEdit::returnPressed, this,
            [this] { emit SigAddressEntered(ui.browserAddress->text()); });
    connect(ui.browserPopup, &QToolButton::clicked, this, [this] { emit SigPopup(!poppedOut); });
    connect(ui.browserFold, &QToolButton::clicked, this, &BrowserToolBar::SigFold);
    ShowHistory(false, false);
    ShowProgress(100);
    ShowEmbedding();
}

void BrowserToolBar::Dress(QToolButton* button, const QString& icon, const QString& text)
{
    button->setIcon(WbIcons::Get(icon));
    button->setToolTip(text);
    button->setAccessibleName(text.section(QStringLiteral("（"), 0, 0));
}

void BrowserToolBar::AddTool(QAction* action)
{
    auto* button = new QToolButton;
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::TabFocus);
    button->setDefaultAction(action);
    button->setObjectName(action->objectName());
    button->setAccessibleName(action->text());
    button->setVisible(action->isVisible());
    connect(action, &QAction::changed, button, [button, action] { button->setVisible(action->isVisible()); });
    ui.layoutTools->addWidget(button);
}

void BrowserToolBar::RemoveTool(const QAction* action)
{
    const QList<QToolButton*> buttons = findChildren<QToolButton*>();
    for (QToolButton* button : buttons)
        if (button->defaultAction() == action)
            delete button;
}

void BrowserToolBar::SetEmbedded(bool on)
{
    embedded = on;
    ShowEmbedding();
}

void BrowserToolBar::SetPoppedOut(bool out)
{
    poppedOut = out;
    ShowEmbedding();
}

void BrowserToolBar::ShowEmbedding()
{
    ui.browserPopup->setVisible(embedded);
    ui.browserFold->setVisible(embedded && !poppedOut);
    Dress(ui.browserPopup, poppedOut ? QStringLiteral("dock") : QStringLiteral("pop-out"),
          poppedOut ? QStringLiteral("放回编辑器") : QStringLiteral("在单独的窗口中显示"));
}

void BrowserToolBar::ShowAddress(const QUrl& url)
{
    // What the user is typing is not taken away by a page that moves on.
    if (ui.browserAddress->hasFocus() && ui.browserAddress->isModified())
        return;
    ui.browserAddress->setText(url.toDisplayString());
    ui.browserAddress->setCursorPosition(0);
}

void BrowserToolBar::ShowHistory(bool canGoBack, bool canGoForward)
{
    ui.browserBack->setEnabled(canGoBack);
    ui.browserForward->setEnabled(canGoForward);
}

void BrowserToolBar::ShowProgress(int percent)
{
    loading = percent < 100;
    // The strip keeps its room, or the page would jump.
    ui.browserProgress->setValue(loading ? percent : 0);
    Dress(ui.browserReload, loading ? QStringLiteral("close") : QStringLiteral("reload"),
          loading ? QStringLiteral("停止加载") : QStringLiteral("重新加载（Ctrl+R）"));
}

void BrowserToolBar::FocusAddress()
{
    ui.browserAddress->setFocus(Qt::ShortcutFocusReason);
    ui.browserAddress->selectAll();
}
