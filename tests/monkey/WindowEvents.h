// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QPoint>
#include <QString>
#include <Qt>

class QWidget;

// Events as the window system sends them: they pass through the window, so that modal dialogs, popups and the
// focus decide who gets them, and are delivered by the event loop, never within the call.
namespace WindowEvents
{
// Places are global.
void Press(QWidget* window, const QPoint& place, Qt::MouseButton button);
void Move(QWidget* window, const QPoint& place, Qt::MouseButtons held);
void Release(QWidget* window, const QPoint& place, Qt::MouseButton button);
void Click(QWidget* window, const QPoint& place, Qt::MouseButton button = Qt::LeftButton);
void DoubleClick(QWidget* window, const QPoint& place);
void Wheel(QWidget* window, const QPoint& place, int degrees);

void Key(QWidget* window, int key, Qt::KeyboardModifiers modifiers, const QString& text = QString());
// Latin text as keys, anything else as an input method commits it.
void Type(QWidget* window, const QString& text);

// As the close button of the window's frame.
void Close(QWidget* window);
} // namespace WindowEvents
