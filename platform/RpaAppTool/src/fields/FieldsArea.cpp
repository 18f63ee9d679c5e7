// SPDX-License-Identifier: Apache-2.0

#include "FieldsArea_p.h"

#include <QEvent>

FieldsArea::FieldsArea(QWidget* parent) : QScrollArea(parent)
{
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
}

// The base class keeps the height that its content had at first.
QSize FieldsArea::sizeHint() const
{
    return widget() ? widget()->sizeHint() : QScrollArea::sizeHint();
}

// The base class asks for the room of its scroll bars, which two fields do not have.
QSize FieldsArea::minimumSizeHint() const
{
    const QSize least = QScrollArea::minimumSizeHint();
    return {least.width(), qMin(least.height(), sizeHint().height())};
}

bool FieldsArea::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == widget() && event->type() == QEvent::LayoutRequest)
        updateGeometry();
    return QScrollArea::eventFilter(watched, event);
}
