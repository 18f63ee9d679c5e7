// SPDX-License-Identifier: Apache-2.0

#include "TabStrip_p.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMouseEvent>

TabStrip::TabStrip(QWidget* parent) : WbTabBar(parent)
{
    setObjectName(QStringLiteral("tabStrip"));
    setAccessibleName(QStringLiteral("标签页"));
    setFocusPolicy(Qt::StrongFocus);
}

int TabStrip::AppendTab(const QString& name)
{
    const int index = addTab(name);
    setTabData(index, nextIdentity++);
    return index;
}

void TabStrip::Swap(int from, int to)
{
    const int low = qMin(from, to);
    const int high = qMax(from, to);
    if (low < 0 || high >= count() || low == high)
        return;
    moveTab(high, low);
    moveTab(low + 1, high);
}

void TabStrip::mousePressEvent(QMouseEvent* event)
{
    WbTabBar::mousePressEvent(event);
    const int index = tabAt(event->pos());
    dragging = false;
    pressedAt = event->pos();
    pressedIdentity = event->button() == Qt::LeftButton && index >= 0 ? tabData(index).toInt() : -1;
}

void TabStrip::mouseMoveEvent(QMouseEvent* event)
{
    WbTabBar::mouseMoveEvent(event);
    if (pressedIdentity < 0 || !event->buttons().testFlag(Qt::LeftButton))
        return;
    const int travelled = qAbs(event->pos().x() - pressedAt.x());
    if (!dragging && travelled >= QApplication::startDragDistance()) {
        dragging = true;
        setCursor(Qt::ClosedHandCursor);
    }
    if (dragging)
        DragTo(event->pos());
}

void TabStrip::mouseReleaseEvent(QMouseEvent* event)
{
    WbTabBar::mouseReleaseEvent(event);
    pressedIdentity = -1;
    if (dragging) {
        dragging = false;
        unsetCursor();
    }
}

void TabStrip::mouseDoubleClickEvent(QMouseEvent* event)
{
    const int index = tabAt(event->pos());
    pressedIdentity = -1;
    if (event->button() == Qt::LeftButton && index >= 0)
        emit SigRename(index);
}

void TabStrip::keyPressEvent(QKeyEvent* event)
{
    if (!HandleKey(*event))
        WbTabBar::keyPressEvent(event);
}

void TabStrip::contextMenuEvent(QContextMenuEvent* event)
{
    const bool byKey = event->reason() == QContextMenuEvent::Keyboard;
    const int index = byKey ? currentIndex() : tabAt(event->pos());
    emit SigMenu(index, byKey ? mapToGlobal(tabRect(index).center()) : event->globalPos());
}

bool TabStrip::HandleKey(const QKeyEvent& event)
{
    const int index = currentIndex();
    if (index < 0)
        return false;
    const bool moving = event.modifiers() == (Qt::ControlModifier | Qt::ShiftModifier);
    switch (event.key()) {
    case Qt::Key_F2:
        emit SigRename(index);
        return true;
    case Qt::Key_Delete:
        emit SigDelete(index);
        return true;
    case Qt::Key_Home:
        setCurrentIndex(0);
        return true;
    case Qt::Key_End:
        setCurrentIndex(count() - 1);
        return true;
    case Qt::Key_PageUp:
        if (moving)
            MoveBy(index, -1);
        return moving;
    case Qt::Key_PageDown:
        if (moving)
            MoveBy(index, 1);
        return moving;
    default:
        return false;
    }
}

void TabStrip::MoveBy(int index, int step)
{
    const int target = index + step;
    if (target >= 0 && target < count())
        emit SigMove(index, target);
}

// Moves go neighbour by neighbour, so that exchanging tabs gives the same order as moving them.
void TabStrip::DragTo(const QPoint& position)
{
    for (int guard = count(); guard > 0; --guard) {
        const int index = IndexOfIdentity(pressedIdentity);
        const int step = index < 0 ? 0 : StepTowards(index, position.x());
        if (step == 0)
            return;
        emit SigMove(index, index + step);
        // The owner may have refused.
        if (IndexOfIdentity(pressedIdentity) == index)
            return;
    }
}

// A tab changes places only when the mouse would then be over it in its new place; otherwise two tabs of
// different width would change places with every movement.
int TabStrip::StepTowards(int index, int x) const
{
    const QRect own = tabRect(index);
    if (index + 1 < count() && x > tabRect(index + 1).right() - own.width() && x > own.right())
        return 1;
    if (index > 0 && x < tabRect(index - 1).left() + own.width() && x < own.left())
        return -1;
    return 0;
}

int TabStrip::IndexOfIdentity(int identity) const
{
    for (int index = 0; index < count(); ++index)
        if (tabData(index).toInt() == identity)
            return index;
    return -1;
}
