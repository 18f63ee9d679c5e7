// SPDX-License-Identifier: Apache-2.0

#include "ReleasedListPage.h"

#include "AppCardDelegate.h"
#include "AppCards.h"
#include "AppPageHead.h"
#include "ReleasedAppModel.h"

#include <WbBaseUI/BaseUIBusiness.h>
#include <WbBaseUI/WbLabel.h>
#include <WbBaseUI/WbLineEdit.h>
#include <WbBaseUI/WbPushButton.h>
#include <WbBaseUI/WbScaledForm.h>

#include <QBoxLayout>
#include <QListView>

namespace
{
constexpr int longestCode = 20;
}

ReleasedListPage::ReleasedListPage(AppTabs::Tab tab, ReleasedAppModel* apps, QWidget* parent)
    : WbBaseWidget(parent), model(apps), head(new AppPageHead(tab, this)),
      cards(new AppCards(QStringLiteral("listReleased"), apps, this))
{
    const bool online = tab == AppTabs::Online;
    setObjectName(online ? QStringLiteral("OnlineAppsPage") : QStringLiteral("GrayAppsPage"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(28, 20, 28, 20);
    layout->setSpacing(16);
    layout->addWidget(head);
    if (!online)
        layout->addWidget(CreateRedeemRow());
    layout->addWidget(cards, 1);
    cards->GetDelegate()->SetReadOnly(online ? QStringLiteral("上线于 ") : QStringLiteral("灰度于 "));
    if (online) {
        cards->SetEmptyState(QStringLiteral("还没有线上应用"),
                             QStringLiteral("作者上线的应用会出现在这里，点击即可运行"));
    } else {
        cards->SetEmptyState(QStringLiteral("还没有灰度应用"),
                             QStringLiteral("向应用的创建者索取邀请码，在上方输入后即可试用"));
    }

    const auto run = [this](const QModelIndex& index) {
        emit SigRun(model->ReleasedAt(cards->RowOf(index)));
    };
    connect(cards->GetList(), &QListView::activated, this, run);
    connect(cards->GetList(), &QListView::clicked, this, run);
    connect(cards, &AppCards::SigRefresh, this, &ReleasedListPage::SigRefresh);
    connect(head, &AppPageHead::SigTab, this, &ReleasedListPage::SigTab);
    connect(head, &AppPageHead::SigRefresh, this, &ReleasedListPage::SigRefresh);
    connect(head, &AppPageHead::SigSearched, this, [this] { cards->Search(head->GetSearched()); });
    WbScaledForm::Follow(this);
}

QWidget* ReleasedListPage::CreateRedeemRow()
{
    auto* row = new QWidget(this);
    editCode = new WbLineEdit(row);
    editCode->setObjectName(QStringLiteral("editCode"));
    editCode->setAccessibleName(QStringLiteral("邀请码"));
    editCode->setPlaceholderText(QStringLiteral("输入邀请码，例如 7KQ2M-XW9HT"));
    editCode->setMaxLength(longestCode);
    editCode->setFixedWidth(260);
    buttonRedeem = new WbPushButton(row, Wb::PrimaryButton);
    buttonRedeem->setObjectName(QStringLiteral("buttonRedeem"));
    buttonRedeem->setText(QStringLiteral("使用邀请码"));
    buttonRedeem->setEnabled(false);
    labelProblem = new WbLabel(row);
    labelProblem->setObjectName(QStringLiteral("labelProblem"));
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(12);
    layout->addWidget(editCode);
    layout->addWidget(buttonRedeem);
    labelProblem->setWordWrap(true);
    layout->addWidget(labelProblem, 1);
    connect(editCode, &QLineEdit::textChanged, this, [this](const QString& text) {
        labelProblem->clear();
        buttonRedeem->setEnabled(!text.trimmed().isEmpty());
    });
    connect(editCode, &QLineEdit::returnPressed, this, &ReleasedListPage::SlotRedeem);
    connect(buttonRedeem, &QPushButton::clicked, this, &ReleasedListPage::SlotRedeem);
    return row;
}

void ReleasedListPage::ShowLoading()
{
    cards->ShowLoading();
}

void ReleasedListPage::ShowFailed(const QString& reason)
{
    cards->ShowFailed(reason);
}

void ReleasedListPage::ShowApps()
{
    cards->ShowLoaded();
}

void ReleasedListPage::ShowRedeemed(const QString& problem)
{
    editCode->setEnabled(true);
    if (problem.isEmpty()) {
        editCode->clear();
        return;
    }
    labelProblem->setText(problem);
    buttonRedeem->setEnabled(true);
    editCode->setFocus();
    editCode->selectAll();
}

void ReleasedListPage::SelectApp(const QString& appId)
{
    cards->SelectRow(model->RowOf(appId));
}

void ReleasedListPage::SlotRedeem()
{
    const QString code = editCode->text().trimmed();
    if (!code.isEmpty() && buttonRedeem->isEnabled()) {
        labelProblem->clear();
        editCode->setEnabled(false);
        buttonRedeem->setEnabled(false);
        emit SigRedeem(code);
    }
}
