#pragma once

#include <QStyledItemDelegate>

// Paints a statement as a card and its gutter. All rows are equally high, so that the view never measures
// them.
class StatementDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    static int RowHeight();
    static int GutterWidth(int lines);

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;

private:
    void PaintGutter(QPainter& painter, const QStyleOptionViewItem& option, const QModelIndex& index) const;
    void PaintCard(QPainter& painter, const QStyleOptionViewItem& option, const QModelIndex& index) const;
    void PaintTexts(QPainter& painter, const QRect& rect, const QStyleOptionViewItem& option,
                    const QModelIndex& index) const;
};
