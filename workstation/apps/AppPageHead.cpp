// SPDX-License-Identifier: Apache-2.0

#include "AppPageHead.h"

#include <WbBaseUI/WbIcons.h>
#include <WbBaseUI/WbScaledForm.h>

#include <QShortcut>

namespace
{
void BindKey(QWidget* head, const QKeySequence& keys, const std::function<void()>& act)
{
    // Anywhere on the page that the head belongs to.
    auto* shortcut = new QShortcut(keys, head->parentWidget());
    shortcut->setContext(Qt::WidgetWithChildrenShortcut);
    QObject::connect(shortcut, &QShortcut::activated, head, act);
}
} // namespace

AppPageHead::AppPageHead(Tab shown, QWidget* parent) : QWidget(parent)
{
    ui.setupUi(this);
    WbScaledForm::Follow(this);
    ui.editSearch->setPlaceholderText(shown == Mine ? QStringLiteral("搜索名称或标签")
                                                    : QStringLiteral("搜索应用名称"));
    ui.editSearch->addAction(WbIcons::Get(QStringLiteral("search")), QLineEdit::LeadingPosition);
    ui.buttonRefresh->setIcon(WbIcons::Get(QStringLiteral("refresh")));
    ConnectTab(ui.tabMine, Mine, shown);
    ConnectTab(ui.tabOnline, Online, shown);
    ConnectTab(ui.tabGray, Gray, shown);
    connect(ui.buttonRefresh, &QPushButton::clicked, this, &AppPageHead::SigRefresh);
    connect(ui.editSearch, &QLineEdit::textChanged, this, &AppPageHead::SigSearched);
    BindKey(this, QKeySequence::Find, [this] { FocusSearch(); });
    BindKey(this, QKeySequence::Refresh, [this] { emit SigRefresh(); });
}

void AppPageHead::ConnectTab(QToolButton* button, Tab tab, Tab shown)
{
    button->setChecked(tab == shown);
    connect(button, &QToolButton::clicked, this, [this, button, tab, shown] {
        button->setChecked(tab == shown); // the mark belongs to the page
        if (tab != shown)
            emit SigTab(tab);
    });
}

void AppPageHead::AddButton(QWidget* button)
{
    ui.rowHead->addWidget(button);
}

bool AppPageHead::HasIdleFocus() const
{
    const QWidget* focus = focusWidget();
    return focus && focus->hasFocus() &&
           (ui.tabs->isAncestorOf(focus) || (focus == ui.editSearch && GetSearched().isEmpty()));
}

void AppPageHead::FocusSearch()
{
    ui.editSearch->setFocus(Qt::ShortcutFocusReason);
    ui.editSearch->selectAll();
}
