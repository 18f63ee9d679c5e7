// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QStyledItemDelegate>

// Draws an app as a card: its kind and state, name, creator and tags, and who changed it when. The card's
// menu mark stands in its upper right corner and is announced apart from the card itself.
class AppCardDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    explicit AppCardDelegate(QObject* parent = nullptr) : QStyledItemDelegate(parent) {}

    // Cards without a menu; timeCaption stands before the time, "上线于 ".
    void SetReadOnly(const QString& timeCaption);

    // Space a card takes in the grid, its margins included.
    static QSize CardSize();

    // Where the menu mark of a card is.
    static QRect MenuRect(const QRect& item);

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    bool editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
                     const QModelIndex& index) override;

signals:
    // The menu mark was pressed.
    void SigMenu(const QModelIndex& index, const QPoint& globalPos);

private:
    QString timeCaption = QStringLiteral("修改于 "); // after who changed it
    bool hasMenu = true;
};
