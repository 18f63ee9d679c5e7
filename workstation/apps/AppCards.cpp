// SPDX-License-Identifier: Apache-2.0

#include "AppCards.h"

#include "AppCardDelegate.h"
#include "AppFilter.h"

#include <WbBaseUI/WbIconPicture.h>

namespace
{
QString NothingFound(const QString& searched)
{
    return AppFilter::IsTag(searched) ? QStringLiteral("没有应用有标签“%1”").arg(searched.mid(1).trimmed())
                                      : QStringLiteral("没有找到名称包含“%1”的应用").arg(searched);
}
} // namespace

AppCards::AppCards(const QString& listName, QAbstractItemModel* model, QWidget* parent)
    : QWidget(parent), filter(new AppFilter(this))
{
    filter->setSourceModel(model);
    ui.setupUi(this);
    ui.statusApps->AddSucceedWidget(ui.stackApps);
    ui.list->setObjectName(listName);
    ui.list->setModel(filter);
    delegate = new AppCardDelegate(ui.list);
    ui.list->setItemDelegate(delegate);
    ui.list->setGridSize(AppCardDelegate::CardSize());
    ui.layoutEmpty->insertWidget(1, new WbIconPicture(QStringLiteral("empty"), 64, WbColor::TextDisabled));

    connect(ui.statusApps, &RequestStatusBaseWidget::SigRefresh, this, &AppCards::SigRefresh);
    connect(model, &QAbstractItemModel::modelReset, this, &AppCards::ShowContent);
}

void AppCards::ShowLoading()
{
    ui.statusApps->SetStatus(RequestStatus::Loading);
}

void AppCards::ShowFailed(const QString& reason)
{
    ui.statusApps->SetErrorMsg(reason);
    ui.statusApps->SetStatus(RequestStatus::Failed);
}

void AppCards::ShowLoaded()
{
    ui.statusApps->SetStatus(RequestStatus::Succeeded);
    ShowContent();
}

void AppCards::Search(const QString& text)
{
    searched = text;
    filter->SetWanted(text);
    ShowContent();
}

void AppCards::SetEmptyState(const QString& title, const QString& hint, QWidget* offer)
{
    emptyTitle = title;
    emptyHint = hint;
    emptyOffer = offer;
    if (offer) {
        ui.layoutEmpty->insertSpacing(ui.layoutEmpty->count() - 1, 8);
        ui.layoutEmpty->insertWidget(ui.layoutEmpty->count() - 1, offer);
    }
    ShowContent();
}

void AppCards::SelectRow(int row)
{
    const QModelIndex card = filter->mapFromSource(filter->sourceModel()->index(row, 0));
    if (card.isValid()) {
        ui.list->setCurrentIndex(card);
        ui.list->scrollTo(card);
        ui.list->setFocus();
    }
}

int AppCards::RowOf(const QModelIndex& card) const
{
    return filter->mapToSource(card).row();
}

void AppCards::ShowContent()
{
    const bool noApps = filter->sourceModel()->rowCount() == 0;
    ui.labelEmpty->setText(noApps ? emptyTitle : NothingFound(searched));
    ui.labelEmptyHint->setText(noApps ? emptyHint : QStringLiteral("换一个词再试"));
    if (emptyOffer)
        emptyOffer->setVisible(noApps);
    ui.stackApps->setCurrentWidget(filter->rowCount() == 0 ? ui.emptyState : ui.list);
    if (!ui.list->currentIndex().isValid())
        ui.list->setCurrentIndex(filter->index(0, 0));
}
