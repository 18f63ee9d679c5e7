// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "ui_AppCards.h"

#include <QWidget>

class AppCardDelegate;
class AppFilter;
class QAbstractItemModel;
class QModelIndex;

// Apps as cards, those with a searched name only; while they load, when that failed and when there are none,
// what to know and do instead.
class AppCards : public QWidget
{
    Q_OBJECT

public:
    // The model's rows are shown; it is not owned. The delegate is that of the cards.
    AppCards(const QString& listName, QAbstractItemModel* model, QWidget* parent = nullptr);

    QListView* GetList() const { return ui.list; }
    AppCardDelegate* GetDelegate() const { return delegate; }

    void ShowLoading();
    void ShowFailed(const QString& reason);
    void ShowLoaded();

    // Shows the apps whose names or tags contain the text, or, when it begins with #, that have this tag.
    void Search(const QString& text);
    // What stands where there are no apps at all; offer is a widget of the caller's below it, or null.
    void SetEmptyState(const QString& title, const QString& hint, QWidget* offer = nullptr);

    // Makes the model's row current and visible.
    void SelectRow(int row);
    // The model's row of a card, or of the current one; -1: none.
    int RowOf(const QModelIndex& card) const;
    int GetCurrentRow() const { return RowOf(ui.list->currentIndex()); }

signals:
    void SigRefresh();

private:
    void ShowContent();

    AppFilter* const filter;
    Ui::AppCards ui;
    AppCardDelegate* delegate = nullptr;
    QWidget* emptyOffer = nullptr;
    QString emptyTitle;
    QString emptyHint;
    QString searched;
};
