// SPDX-License-Identifier: Apache-2.0

#include "FlowLayout_p.h"

FlowLayout::FlowLayout(QWidget* parent, int gap) : QLayout(parent)
{
    setContentsMargins(0, 0, 0, 0);
    setSpacing(gap);
}

FlowLayout::~FlowLayout()
{
    qDeleteAll(items);
}

QLayoutItem* FlowLayout::takeAt(int index)
{
    return index >= 0 && index < items.size() ? items.takeAt(index) : nullptr;
}

QSize FlowLayout::minimumSize() const
{
    QSize size;
    for (const QLayoutItem* item : items)
        size = size.expandedTo(item->minimumSize());
    return size;
}

void FlowLayout::setGeometry(const QRect& rect)
{
    QLayout::setGeometry(rect);
    Arrange(rect, true);
}

int FlowLayout::Arrange(const QRect& rect, bool apply) const
{
    int x = rect.x();
    int y = rect.y();
    int lineHeight = 0;
    for (QLayoutItem* item : items) {
        const QSize hint = item->sizeHint();
        if (x > rect.x() && x + hint.width() > rect.right() + 1) {
            x = rect.x();
            y += lineHeight + spacing();
            lineHeight = 0;
        }
        if (apply)
            item->setGeometry(QRect(QPoint(x, y), hint));
        x += hint.width() + spacing();
        lineHeight = qMax(lineHeight, hint.height());
    }
    return y + lineHeight - rect.y();
}
