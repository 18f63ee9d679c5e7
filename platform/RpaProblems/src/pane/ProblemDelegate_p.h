// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QStyledItemDelegate>

class QTreeView;

// Rows as tall as their texts need in the columns of the view, up to three lines.
class ProblemDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    explicit ProblemDelegate(QTreeView* view);

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    const QTreeView* view;
};
