// SPDX-License-Identifier: Apache-2.0

#include "ClickGuard.h"

#include <QApplication>
#include <QMouseEvent>
#include <QStyleHints>
#include <QWidget>

ClickGuard::ClickGuard(QObject* parent) : QObject(parent)
{
    qApp->installEventFilter(this);
}

bool ClickGuard::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::Show:
        if (watched->isWidgetType())
            appeared.insert(watched);
        return false;
    // Windows get the mouse before any of their widgets does.
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::MouseButtonRelease:
        return watched->isWindowType() && TakeMouse(event);
    default:
        return false;
    }
}

bool ClickGuard::TakeMouse(QEvent* event)
{
    const auto& mouse = *static_cast<QMouseEvent*>(event);
    switch (event->type()) {
    case QEvent::MouseButtonPress:
        swallowing = IsSwallowed(mouse);
        return swallowing;
    case QEvent::MouseButtonRelease: {
        const bool mine = swallowing;
        swallowing = swallowing && mouse.buttons() != Qt::NoButton;
        return mine;
    }
    default:
        return swallowing;
    }
}

bool ClickGuard::IsSwallowed(const QMouseEvent& press)
{
    const bool continues = Continues(press);
    if (!continues)
        appeared.clear();
    lastPress = std::chrono::milliseconds(press.timestamp());
    lastPlace = press.globalPos();
    button = press.button();
    return continues && IsNewAt(press.globalPos());
}

// Times are those of the presses, not of their arrival: building what appears may take longer than the user
// needs for the second press.
bool ClickGuard::Continues(const QMouseEvent& press) const
{
    const auto since = std::chrono::milliseconds(press.timestamp()) - lastPress;
    const QPoint way = press.globalPos() - lastPlace;
    return press.button() == button && since.count() >= 0 &&
           since.count() <= QApplication::doubleClickInterval() &&
           way.manhattanLength() <= QGuiApplication::styleHints()->startDragDistance();
}

bool ClickGuard::IsNewAt(const QPoint& globalPlace) const
{
    return appeared.contains(QApplication::widgetAt(globalPlace));
}
