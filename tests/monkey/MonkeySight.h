// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QApplication>
#include <QList>
#include <QString>
#include <QWidget>

// What a user would see and be tempted by.
namespace MonkeySight
{
// The window that takes events now: a popup, a modal dialog, or one of the windows. whim: 0–99.
QWidget* WindowInUse(int whim);

// What of a window invites to do something; some of it less often than the rest.
QList<QWidget*> Inviting(QWidget* window);

QString NameOf(const QWidget* widget);

// The page that a window shows, or the kind of window that it is.
QString PlaceOf(const QWidget* window);

// Something on the screen that no dialog stands in front of.
template <typename Widget>
Widget* Find(const char* name)
{
    if (QApplication::activeModalWidget() || QApplication::activePopupWidget())
        return nullptr;
    const auto all = QApplication::allWidgets();
    for (QWidget* widget : all) {
        if (widget->objectName() == QLatin1String(name) && widget->isVisible()) {
            if (auto* found = qobject_cast<Widget*>(widget))
                return found;
        }
    }
    return nullptr;
}
} // namespace MonkeySight
