// SPDX-License-Identifier: Apache-2.0

#include "ReleasedListPage.h"

#include "AppCardDelegate.h"
#include "AppCards.h"
#include "AppPageHead.h"
#include "ReleasedAppModel.h"

#include <WbBaseUI/WbScaledForm.h>

#include <QListView>

ReleasedListPage::ReleasedListPage(AppPageHead::Tab tab, ReleasedAppModel* apps, QWidget* parent)
    : WbBaseWidget(parent), model(apps), head(new AppPageHead(tab, this)),
      cards(new AppCards(QStringLiteral("listReleased"), apps, this))
{
    const bool online = tab == AppPageHead::Online;
    setObjectName(online ? QStringLiteral("OnlineAppsPage") : QStringLiteral("GrayAppsPage"));
    ui.setupUi(this);
    ui.layoutPage->insertWidget(0, head);
    ui.layoutPage->addWidget(cards, 1);
    ui.rowRedeem->setVisible(!online);
    WbScaledForm::Follow(this);
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
    connect(ui.editCode, &QLineEdit::textChanged, this, [this](const QString& text) {
        ui.labelProblem->clear();
        ui.buttonRedeem->setEnabled(!text.trimmed().isEmpty());
    });
    connect(ui.editCode, &QLineEdit::returnPressed, this, &ReleasedListPage::SlotRedeem);
    connect(ui.buttonRedeem, &QPushButton::clicked, this, &ReleasedListPage::SlotRedeem);
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
    ui.editCode->setEnabled(true);
    if (problem.isEmpty()) {
        ui.editCode->clear();
        return;
    }
    ui.labelProblem->setText(problem);
    ui.buttonRedeem->setEnabled(true);
    ui.editCode->setFocus();
    ui.editCode->selectAll();
}

void ReleasedListPage::SelectApp(const QString& appId)
{
    cards->SelectRow(model->RowOf(appId));
}

void ReleasedListPage::SlotRedeem()
{
    const QString code = ui.editCode->text().trimmed();
    if (!code.isEmpty() && ui.buttonRedeem->isEnabled()) {
        ui.labelProblem->clear();
        ui.editCode->setEnabled(false);
        ui.buttonRedeem->setEnabled(false);
        emit SigRedeem(code);
    }
}
