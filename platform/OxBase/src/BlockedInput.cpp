// SPDX-License-Identifier: Apache-2.0

#include "BlockedInput_p.h"

#include <QCloseEvent>
#include <QGuiApplication>

namespace
{
bool IsInput(const QEvent& event)
{
    switch (event.type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::NonClientAreaMouseButtonPress:
    case QEvent::NonClientAreaMouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::Shortcut:
    case QEvent::ShortcutOverride:
    case QEvent::InputMethod:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TabletPress:
    case QEvent::TabletMove:
    case QEvent::TabletRelease:
    case QEvent::NativeGesture:
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
        return true;
    case QEvent::Close:
        // A program closing one of its windows (a toast whose time is over) is no input.
        return event.spontaneous();
    default:
        return false;
    }
}

bool ReachesAWindow(const QObject& receiver, const QEvent& event)
{
    // Shortcuts go to the QShortcut or QAction itself.
    return receiver.isWidgetType() || receiver.isWindowType() || event.type() == QEvent::Shortcut;
}
} // namespace

BlockedInput::BlockedInput()
{
    if (!qobject_cast<QGuiApplication*>(QCoreApplication::instance()))
        return;

    const QWindowList windows = QGuiApplication::allWindows();
    for (QWindow* window : windows)
        if (window->isVisible() && window->modality() != Qt::NonModal)
            olderModals.append(window);
    QCoreApplication::instance()->installEventFilter(this);
}

bool BlockedInput::eventFilter(QObject* receiver, QEvent* event)
{
    if (!IsInput(*event) || !ReachesAWindow(*receiver, *event) || LetsPass())
        return QObject::eventFilter(receiver, event);

    // Not accepted: a close stays undone, a drop gives the data back to its source.
    event->ignore();
    return true;
}

bool BlockedInput::LetsPass() const
{
    QWindow* modal = QGuiApplication::modalWindow();
    return modal && !olderModals.contains(modal);
}
