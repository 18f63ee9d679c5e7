// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QStyledItemDelegate>

// Tells the whole text of a cell that is too narrow for it, and cuts nothing of it when it is edited.
class CutTextDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;
};
