// SPDX-License-Identifier: Apache-2.0

#include "ProblemDelegate_p.h"

#include <OxBase/DpiTool.h>

#include <QTreeView>

namespace
{
constexpr int mostLines = 3;
constexpr int padding = 10;
} // namespace

ProblemDelegate::ProblemDelegate(QTreeView* treeView) : QStyledItemDelegate(treeView), view(treeView) {}

// The view asks without telling how wide the column is.
QSize ProblemDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const QSize oneLine = QStyledItemDelegate::sizeHint(option, index);
    const int icon = index.data(Qt::DecorationRole).isNull() ? 0 : option.decorationSize.width() + padding;
    const int width = view->columnWidth(index.column()) - icon - 2 * DpiTool::ScaleDefault(padding);
    const QFontMetrics& metrics = option.fontMetrics;
    const QRect wrapped = metrics.boundingRect(QRect(0, 0, qMax(1, width), QWIDGETSIZE_MAX), Qt::TextWordWrap,
                                               index.data().toString());
    const int height = qMin(wrapped.height(), mostLines * metrics.lineSpacing());
    return {oneLine.width(), qMax(oneLine.height(), height + DpiTool::ScaleDefault(padding))};
}
