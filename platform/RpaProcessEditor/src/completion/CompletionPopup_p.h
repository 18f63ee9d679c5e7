// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "CompletionItems_p.h"

#include <QAbstractListModel>
#include <QFrame>

class QLabel;
class QListView;

class CompletionModel : public QAbstractListModel
{
    Q_OBJECT

public:
    using QAbstractListModel::QAbstractListModel;

    void Show(const CompletionItems& shown);
    const CompletionItem& At(int row) const { return items.at(row); }

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    // Qt::UserRole: the kind, for the author.
    QVariant data(const QModelIndex& index, int role) const override;

private:
    CompletionItems items;
};

// The list of completions at the cursor. It never takes the keyboard: its owner moves the selection.
class CompletionPopup : public QFrame
{
    Q_OBJECT

public:
    explicit CompletionPopup(QWidget* owner);

    // cursor: of the screen; the list stands below it, or above where there is no room. hint: below the list; empty:
    // nothing.
    void ShowAt(const QRect& cursor, const CompletionItems& items, const QString& hint);

    // Rows; stays within the list.
    void Move(int by);
    int RowsOfAPage() const;
    // Only while it is shown.
    CompletionItem Current() const;

signals:
    void SigClicked();
    void SigHidden();

protected:
    void hideEvent(QHideEvent* event) override;

private:
    void Place(const QRect& cursor);

    CompletionModel* const model;
    QListView* const list;
    QLabel* const hintLabel;
};
