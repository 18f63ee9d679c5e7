// SPDX-License-Identifier: Apache-2.0

#include "LogDelegate_p.h"
#include "LogModel_p.h"

#include <OxBase/DpiTool.h>

#include <QHeaderView>
#include <QPainter>
#include <QTableView>
#include <QTextLayout>
#include <QtMath>

namespace
{
int Padding()
{
    return DpiTool::ScaleDefault(8); // as the style sheet has it
}

qreal LayOut(QTextLayout& layout, int width)
{
    QTextOption wrap;
    wrap.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(wrap);
    layout.beginLayout();
    qreal height = 0;
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(qMax(1, width));
        line.setPosition({0, height});
        height += line.height();
    }
    layout.endLayout();
    return height;
}

// The first line stands in the middle of a row of the usual height, as what is beside it does.
int GapOf(const QTextLayout& layout, const QTableView& view)
{
    return qMax(0, (view.verticalHeader()->defaultSectionSize() - qCeil(layout.lineAt(0).height())) / 2);
}

QString TextOf(const QModelIndex& index)
{
    return index.data().toString().replace(QLatin1Char('\n'), QChar::LineSeparator);
}
} // namespace

LogDelegate::LogDelegate(QTableView* tableView) : QStyledItemDelegate(tableView), view(tableView) {}

bool LogDelegate::Wraps(const QModelIndex& index) const
{
    return view->wordWrap() && index.column() == LogModel::TextColumn;
}

void LogDelegate::paint(QPainter* painter, const QStyleOptionViewItem& given, const QModelIndex& index) const
{
    QStyleOptionViewItem option = given;
    option.state &= ~QStyle::State_HasFocus; // a row is chosen as a whole: the view frames it
    if (!Wraps(index)) {
        QStyleOptionViewItem upper = option;
        if (view->wordWrap()) { // beside the first line of its text
            view->style()->drawPrimitive(QStyle::PE_PanelItemViewItem, &option, painter, view);
            upper.rect.setHeight(qMin(option.rect.height(), view->verticalHeader()->defaultSectionSize()));
        }
        QStyledItemDelegate::paint(painter, upper, index);
        return;
    }
    QStyleOptionViewItem cell = option;
    initStyleOption(&cell, index);
    cell.text.clear();
    view->style()->drawControl(QStyle::CE_ItemViewItem, &cell, painter, view);
    QTextLayout layout(TextOf(index), cell.font);
    LayOut(layout, option.rect.width() - 2 * Padding());
    painter->save();
    painter->setPen(cell.palette.color(QPalette::Text));
    layout.draw(painter, option.rect.topLeft() + QPoint(Padding(), GapOf(layout, *view)));
    painter->restore();
}

QSize LogDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const QSize oneLine = QStyledItemDelegate::sizeHint(option, index);
    if (!Wraps(index))
        return view->wordWrap() ? QSize(oneLine.width(), view->verticalHeader()->defaultSectionSize())
                                : oneLine;
    QStyleOptionViewItem cell = option;
    initStyleOption(&cell, index);
    QTextLayout layout(TextOf(index), cell.font);
    const qreal height = LayOut(layout, view->columnWidth(index.column()) - 2 * Padding());
    return {oneLine.width(),
            qMax(view->verticalHeader()->defaultSectionSize(), qCeil(height) + 2 * GapOf(layout, *view))};
}
