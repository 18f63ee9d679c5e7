// SPDX-License-Identifier: Apache-2.0

#include "WindowEvents.h"

#include <QApplication>
#include <QCloseEvent>
#include <QElapsedTimer>
#include <QInputMethodEvent>
#include <QStyleHints>
#include <QWheelEvent>
#include <QWidget>
#include <QWindow>
#include <QtTest>

namespace
{
// Presses that follow each other at one place would be double clicks.
int NextTime()
{
    static int time = 0;
    time += QGuiApplication::styleHints()->mouseDoubleClickInterval() + 1;
    return time;
}

void Mouse(QWidget* window, const QPoint& place, Qt::MouseButtons held, Qt::MouseButton button,
           QEvent::Type type, int time)
{
    if (QWindow* handle = window->windowHandle()) {
        qt_handleMouseEvent(handle, handle->mapFromGlobal(place), place, held, button, type, Qt::NoModifier,
                            time);
    }
}
} // namespace

void WindowEvents::Press(QWidget* window, const QPoint& place, Qt::MouseButton button)
{
    Mouse(window, place, button, button, QEvent::MouseButtonPress, NextTime());
}

void WindowEvents::Move(QWidget* window, const QPoint& place, Qt::MouseButtons held)
{
    Mouse(window, place, held, Qt::NoButton, QEvent::MouseMove, NextTime());
}

void WindowEvents::Release(QWidget* window, const QPoint& place, Qt::MouseButton button)
{
    Mouse(window, place, Qt::NoButton, button, QEvent::MouseButtonRelease, NextTime());
}

void WindowEvents::Click(QWidget* window, const QPoint& place, Qt::MouseButton button)
{
    Press(window, place, button);
    Release(window, place, button);
}

void WindowEvents::DoubleClick(QWidget* window, const QPoint& place)
{
    Click(window, place);
    const int time = NextTime() - QGuiApplication::styleHints()->mouseDoubleClickInterval();
    Mouse(window, place, Qt::LeftButton, Qt::LeftButton, QEvent::MouseButtonPress, time);
    Release(window, place, Qt::LeftButton);
}

void WindowEvents::Wheel(QWidget* window, const QPoint& place, int degrees)
{
    if (QWindow* handle = window->windowHandle()) {
        QCoreApplication::postEvent(handle, new QWheelEvent(handle->mapFromGlobal(place), place, QPoint(),
                                                            QPoint(0, degrees * 8), Qt::NoButton,
                                                            Qt::NoModifier, Qt::NoScrollPhase, false));
    }
}

void WindowEvents::Key(QWidget* window, int key, Qt::KeyboardModifiers modifiers, const QString& text)
{
    if (QWindow* handle = window->windowHandle()) {
        qt_handleKeyEvent(handle, QEvent::KeyPress, key, modifiers, text);
        qt_handleKeyEvent(handle, QEvent::KeyRelease, key, modifiers, text);
    }
}

void WindowEvents::Type(QWidget* window, const QString& text)
{
    for (const QChar letter : text) {
        if (letter.unicode() < 128) {
            Key(window, letter.toUpper().unicode(), Qt::NoModifier, letter);
        } else if (QObject* focus = QGuiApplication::focusObject()) {
            auto* commit = new QInputMethodEvent;
            commit->setCommitString(letter);
            QCoreApplication::postEvent(focus, commit);
        }
    }
}

void WindowEvents::Close(QWidget* window)
{
    if (QWindow* handle = window->windowHandle())
        QCoreApplication::postEvent(handle, new QCloseEvent);
}
