// SPDX-License-Identifier: Apache-2.0

// Breakpoints in the tree of statements, which a press beside a statement sets, and the statement of a stop.
#include "StatementDelegate_p.h"
#include "StatementView_p.h"

#include <QMouseEvent>

void StatementView::Reveal(const QString& id)
{
    const QModelIndex index = statements->IndexOf(id);
    for (QModelIndex above = index.parent(); above.isValid(); above = above.parent())
        expand(above);
    scrollTo(index);
}

QString StatementView::MarkAt(const QPoint& position) const
{
    const QModelIndex index = indexAt(position);
    if (!index.isValid() || index.column() != StatementModel::GutterColumn)
        return QString();
    const int left = visualRect(index.siblingAtColumn(StatementModel::GutterColumn)).left();
    return position.x() - left < StatementDelegate::MarkWidth() ? statements->NodeOf(index)->GetId()
                                                                : QString();
}

void StatementView::mousePressEvent(QMouseEvent* event)
{
    const QString id = event->button() == Qt::LeftButton ? MarkAt(event->pos()) : QString();
    pressesMark = !id.isEmpty();
    if (pressesMark)
        emit SigMarkPressed(id);
    else
        QTreeView::mousePressEvent(event);
}

void StatementView::mouseMoveEvent(QMouseEvent* event)
{
    // Else a hand that is not quite still would select from wherever it pressed last.
    if (!pressesMark)
        QTreeView::mouseMoveEvent(event);
}

void StatementView::mouseReleaseEvent(QMouseEvent* event)
{
    if (!pressesMark)
        QTreeView::mouseReleaseEvent(event);
    pressesMark = false;
}

void StatementView::mouseDoubleClickEvent(QMouseEvent* event)
{
    // The second press of two quick ones on a breakpoint's place is a press, too.
    if (event->button() == Qt::LeftButton && !MarkAt(event->pos()).isEmpty()) {
        mousePressEvent(event);
        return;
    }
    QTreeView::mouseDoubleClickEvent(event);
    const QModelIndex index = indexAt(event->pos());
    if (index.isValid() && index.column() == StatementModel::StatementColumn)
        emit SigPropertiesAsked();
}
