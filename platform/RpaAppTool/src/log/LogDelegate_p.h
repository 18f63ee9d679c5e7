// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QStyledItemDelegate>

class QTableView;

// Shows the texts of a log whole while its view wraps: lines break between words, or within what is too long
// for a line.
class LogDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    explicit LogDelegate(QTableView* view);

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    bool Wraps(const QModelIndex& index) const;

    const QTableView* view;
};
