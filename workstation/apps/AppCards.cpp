// SPDX-License-Identifier: Apache-2.0

#include "AppCards.h"

#include "AppCardDelegate.h"
#include "AppFilter.h"

#include <WbBaseUI/RequestStatusBaseWidget.h>
#include <WbBaseUI/WbIconPicture.h>
#include <WbBaseUI/WbLabel.h>

#include <QBoxLayout>
#include <QListView>
#include <QStackedWidget>

namespace
{
QString NothingFound(const QString& searched)
{
    return AppFilter::IsTag(searched) ? QStringLiteral("没有应用有标签“%1”").arg(searched.mid(1).trimmed())
                                      : QStringLiteral("没有找到名称包含“%1”的应用").arg(searched);
}
} // namespace

AppCards::AppCards(const QString& listName, QAbstractItemModel* model, QWidget* parent)
    : QWidget(parent), filter(new AppFilter(this)), status(new RequestStatusBaseWidget(this)),
      content(new QStackedWidget(this))
{
    filter->setSourceModel(model);
    status->setObjectName(QStringLiteral("statusApps"));
    content->setObjectName(QStringLiteral("stackApps"));
    list = CreateList(listName);
    emptyState = CreateEmptyState();
    content->addWidget(list);
    content->addWidget(emptyState);
    status->AddSucceedWidget(content);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(status, 1);
    layout->addWidget(content, 1);

    connect(status, &RequestStatusBaseWidget::SigRefresh, this, &AppCards::SigRefresh);
    connect(model, &QAbstractItemModel::modelReset, this, &AppCards::ShowContent);
}

QListView* AppCards::CreateList(const QString& name)
{
    auto* view = new QListView(content);
    view->setObjectName(name);
    view->setAccessibleName(QStringLiteral("应用列表"));
    view->setModel(filter);
    view->setFrameShape(QFrame::NoFrame);
    view->setViewMode(QListView::IconMode);
    view->setMovement(QListView::Static);
    view->setResizeMode(QListView::Adjust);
    view->setUniformItemSizes(true);
    view->setMouseTracking(true);
    view->setSelectionMode(QAbstractItemView::SingleSelection);
    view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    view->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    view->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    delegate = new AppCardDelegate(view);
    view->setItemDelegate(delegate);
    view->setGridSize(AppCardDelegate::CardSize());
    return view;
}

QWidget* AppCards::CreateEmptyState()
{
    auto* empty = new QWidget(content);
    empty->setObjectName(QStringLiteral("emptyState"));
    auto* picture = new WbIconPicture(QStringLiteral("empty"), 64, WbColor::TextDisabled, empty);
    labelEmpty = new WbLabel(empty);
    labelEmpty->setObjectName(QStringLiteral("labelEmpty"));
    labelEmpty->setAlignment(Qt::AlignCenter);
    labelEmptyHint = new WbLabel(empty);
    labelEmptyHint->setObjectName(QStringLiteral("labelEmptyHint"));
    labelEmptyHint->setAlignment(Qt::AlignCenter);
    auto* layout = new QVBoxLayout(empty);
    layout->setSpacing(8);
    layout->addStretch(2);
    layout->addWidget(picture);
    layout->addWidget(labelEmpty);
    layout->addWidget(labelEmptyHint);
    layout->addStretch(3);
    return empty;
}

void AppCards::ShowLoading()
{
    status->SetStatus(RequestStatus::Loading);
}

void AppCards::ShowFailed(const QString& reason)
{
    status->SetErrorMsg(reason);
    status->SetStatus(RequestStatus::Failed);
}

void AppCards::ShowLoaded()
{
    status->SetStatus(RequestStatus::Succeeded);
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
        auto* layout = qobject_cast<QVBoxLayout*>(emptyState->layout());
        layout->insertSpacing(layout->count() - 1, 8);
        layout->insertWidget(layout->count() - 1, offer);
    }
    ShowContent();
}

void AppCards::SelectRow(int row)
{
    const QModelIndex card = filter->mapFromSource(filter->sourceModel()->index(row, 0));
    if (card.isValid()) {
        list->setCurrentIndex(card);
        list->scrollTo(card);
        list->setFocus();
    }
}

int AppCards::RowOf(const QModelIndex& card) const
{
    return filter->mapToSource(card).row();
}

int AppCards::GetCurrentRow() const
{
    return RowOf(list->currentIndex());
}

void AppCards::ShowContent()
{
    const bool noApps = filter->sourceModel()->rowCount() == 0;
    labelEmpty->setText(noApps ? emptyTitle : NothingFound(searched));
    labelEmptyHint->setText(noApps ? emptyHint : QStringLiteral("换一个词再试"));
    if (emptyOffer)
        emptyOffer->setVisible(noApps);
    content->setCurrentWidget(filter->rowCount() == 0 ? emptyState : static_cast<QWidget*>(list));
    if (!list->currentIndex().isValid())
        list->setCurrentIndex(filter->index(0, 0));
}
