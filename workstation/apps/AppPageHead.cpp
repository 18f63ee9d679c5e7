// SPDX-License-Identifier: Apache-2.0

#include "AppPageHead.h"

#include <WbBaseUI/BaseUIBusiness.h>
#include <WbBaseUI/WbIcons.h>
#include <WbBaseUI/WbLineEdit.h>
#include <WbBaseUI/WbPushButton.h>
#include <WbBaseUI/WbScaledForm.h>

#include <QBoxLayout>
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

AppPageHead::AppPageHead(AppTabs::Tab shown, QWidget* parent)
    : QWidget(parent), tabs(new AppTabs(shown, this)), editSearch(new WbLineEdit(this)),
      row(new QHBoxLayout(this))
{
    editSearch->setObjectName(QStringLiteral("editSearch"));
    editSearch->setAccessibleName(QStringLiteral("搜索应用"));
    editSearch->setPlaceholderText(shown == AppTabs::Mine ? QStringLiteral("搜索名称或标签")
                                                          : QStringLiteral("搜索应用名称"));
    editSearch->setToolTip(QStringLiteral("搜索应用（Ctrl+F）"));
    editSearch->setClearButtonEnabled(true);
    editSearch->addAction(WbIcons::Get(QStringLiteral("search")), QLineEdit::LeadingPosition);
    editSearch->setMinimumWidth(160);
    editSearch->setMaximumWidth(260);
    auto* refresh = new WbPushButton(this, Wb::SecondaryButton);
    refresh->setObjectName(QStringLiteral("buttonRefresh"));
    refresh->setText(QStringLiteral("刷新"));
    refresh->setToolTip(QStringLiteral("重新读取应用列表（F5）"));
    refresh->setIcon(WbIcons::Get(QStringLiteral("refresh")));
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(12);
    row->addWidget(tabs);
    row->addStretch(1);
    row->addWidget(editSearch, 1000); // as much as it may have before anything stays empty
    row->addWidget(refresh);

    connect(tabs, &AppTabs::SigChosen, this, &AppPageHead::SigTab);
    connect(refresh, &QPushButton::clicked, this, &AppPageHead::SigRefresh);
    connect(editSearch, &QLineEdit::textChanged, this, &AppPageHead::SigSearched);
    BindKey(this, QKeySequence::Find, [this] { FocusSearch(); });
    BindKey(this, QKeySequence::Refresh, [this] { emit SigRefresh(); });
    WbScaledForm::Follow(this);
}

void AppPageHead::AddButton(QWidget* button)
{
    row->addWidget(button);
}

QString AppPageHead::GetSearched() const
{
    return editSearch->text().trimmed();
}

void AppPageHead::SetSearched(const QString& text)
{
    editSearch->setText(text);
}

bool AppPageHead::HasIdleFocus() const
{
    const QWidget* focus = focusWidget();
    return focus && focus->hasFocus() &&
           (tabs->isAncestorOf(focus) || (focus == editSearch && GetSearched().isEmpty()));
}

void AppPageHead::FocusSearch()
{
    editSearch->setFocus(Qt::ShortcutFocusReason);
    editSearch->selectAll();
}
