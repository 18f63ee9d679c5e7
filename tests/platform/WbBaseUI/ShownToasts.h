// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QLabel>
#include <QList>
#include <QWidget>

// The toasts that a window shows now, the oldest first.
inline QList<QWidget*> ToastsIn(QWidget& window)
{
    QList<QWidget*> visible;
    for (QWidget* toast : window.findChildren<QWidget*>(QStringLiteral("WbToast")))
        if (toast->isVisible())
            visible.append(toast);
    return visible;
}

inline QString TextOf(const QWidget* toast)
{
    return toast->findChild<QLabel*>(QStringLiteral("labelToastText"))->text();
}
