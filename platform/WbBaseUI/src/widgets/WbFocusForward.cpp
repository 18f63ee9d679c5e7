// SPDX-License-Identifier: Apache-2.0

#include <WbBaseUI/WbFocusForward.h>

#include <QFocusEvent>

WbFocusForward::WbFocusForward(QWidget* compound, QWidget* part) : QObject(compound), target(part)
{
    compound->installEventFilter(this);
}

bool WbFocusForward::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::FocusIn && target)
        target->setFocus(static_cast<QFocusEvent*>(event)->reason());
    return QObject::eventFilter(watched, event);
}
