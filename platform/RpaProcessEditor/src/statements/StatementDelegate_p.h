// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QFont>
#include <QStyledItemDelegate>

#include <optional>

// Paints a statement as a card and its gutter. All rows are equally high, so that the view never measures
// them.
class StatementDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    explicit StatementDelegate(QObject* parent);

    static int RowHeight();
    static int GutterWidth(int lines);
    // The left part of the gutter, where breakpoints stand.
    static int MarkWidth();

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;

private:
    void PaintGutter(QPainter& painter, const QStyleOptionViewItem& option, const QModelIndex& index) const;
    void PaintCard(QPainter& painter, const QStyleOptionViewItem& option, const QModelIndex& index) const;
    void PaintTexts(QPainter& painter, const QRect& rect, const QStyleOptionViewItem& option,
                    const QModelIndex& index) const;
    const QFont& TitleFont(const QFont& base, bool enabled) const;

    // Kept, since a font made anew is looked up among all fonts of the system.
    QFont gutterFont;
    mutable std::optional<QFont> titleBase; // what the title fonts were made from
    mutable QFont titleFonts[2];            // of a disabled and of an enabled statement
};
