// SPDX-License-Identifier: Apache-2.0

#include "BrowserToolBar_p.h"

#include <OxBase/DpiTool.h>
#include <WbBaseUI/WbIcons.h>
#include <WbBaseUI/WbLineEdit.h>

#include <QAction>
#include <QHBoxLayout>
#include <QProgressBar>
#include <QToolButton>

BrowserToolBar::BrowserToolBar(QWidget* parent)
    : QWidget(parent), row(new QHBoxLayout), address(new WbLineEdit), tools(new QHBoxLayout),
      progress(new QProgressBar)
{
    setObjectName(QStringLiteral("browserToolBar"));
    setProperty("wbRole", QStringLiteral("toolbar"));
    setAttribute(Qt::WA_StyledBackground);
    back = AddButton("browserBack", QStringLiteral("back"), QStringLiteral("后退（Alt+←）"));
    forward = AddButton("browserForward", QStringLiteral("forward"), QStringLiteral("前进（Alt+→）"));
    reload = AddButton("browserReload", QStringLiteral("reload"), QStringLiteral("重新加载"));

    address->setObjectName(QStringLiteral("browserAddress"));
    address->setPlaceholderText(QStringLiteral("输入网址后回车"));
    address->setAccessibleName(QStringLiteral("网址"));
    address->setMaxLength(4096);
    address->setMinimumWidth(DpiTool::ScaleDefault(80));
    row->addWidget(address, 1);
    tools->setSpacing(2);
    row->addLayout(tools);
    popup = AddButton("browserPopup", QString(), QString());
    fold = AddButton("browserFold", QStringLiteral("unfold"), QStringLiteral("折叠浏览器窗口"));
    row->setContentsMargins(6, 5, 6, 4);
    row->setSpacing(2);

    progress->setObjectName(QStringLiteral("browserProgress"));
    progress->setAccessibleName(QStringLiteral("网页加载进度"));
    progress->setTextVisible(false);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 1);
    layout->setSpacing(0);
    layout->addLayout(row);
    layout->addWidget(progress);

    connect(back, &QToolButton::clicked, this, &BrowserToolBar::SigBack);
    connect(forward, &QToolButton::clicked, this, &BrowserToolBar::SigForward);
    connect(reload, &QToolButton::clicked, this, [this] { loading ? emit SigStop() : emit SigReload(); });
    connect(address, &QLineEdit::returnPressed, this, [this] { emit SigAddressEntered(address->text()); });
    connect(popup, &QToolButton::clicked, this, [this] { emit SigPopup(!poppedOut); });
    connect(fold, &QToolButton::clicked, this, &BrowserToolBar::SigFold);
    ShowHistory(false, false);
    ShowProgress(100);
    ShowEmbedding();
}

QToolButton* BrowserToolBar::AddButton(const char* name, const QString& icon, const QString& text)
{
    auto* button = new QToolButton;
    button->setObjectName(QLatin1String(name));
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::TabFocus);
    Dress(button, icon, text);
    row->addWidget(button);
    return button;
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
    tools->addWidget(button);
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
    popup->setVisible(embedded);
    fold->setVisible(embedded && !poppedOut);
    Dress(popup, poppedOut ? QStringLiteral("dock") : QStringLiteral("pop-out"),
          poppedOut ? QStringLiteral("放回编辑器") : QStringLiteral("在单独的窗口中显示"));
}

void BrowserToolBar::ShowAddress(const QUrl& url)
{
    // What the user is typing is not taken away by a page that moves on.
    if (address->hasFocus() && address->isModified())
        return;
    address->setText(url.toDisplayString());
    address->setCursorPosition(0);
}

void BrowserToolBar::ShowHistory(bool canGoBack, bool canGoForward)
{
    back->setEnabled(canGoBack);
    forward->setEnabled(canGoForward);
}

void BrowserToolBar::ShowProgress(int percent)
{
    loading = percent < 100;
    // The strip keeps its room, or the page would jump.
    progress->setValue(loading ? percent : 0);
    Dress(reload, loading ? QStringLiteral("close") : QStringLiteral("reload"),
          loading ? QStringLiteral("停止加载") : QStringLiteral("重新加载（Ctrl+R）"));
}

void BrowserToolBar::FocusAddress()
{
    address->setFocus(Qt::ShortcutFocusReason);
    address->selectAll();
}
