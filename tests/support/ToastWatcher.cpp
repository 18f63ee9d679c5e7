// SPDX-License-Identifier: Apache-2.0

#include "ToastWatcher.h"

#include <QApplication>
#include <QEvent>
#include <QLabel>
#include <QStringList>
#include <QWidget>
#include <QtTest>

ToastWatcher::ToastWatcher()
{
    qApp->installEventFilter(this);
}

ToastWatcher::~ToastWatcher()
{
    qApp->removeEventFilter(this);
}

QStringList ToastWatcher::GetTexts() const
{
    QStringList texts;
    for (const SeenToast& toast : toasts)
        texts.append(toast.text);
    return texts;
}

bool ToastWatcher::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Show && watched->objectName() == QLatin1String("WbToast") &&
        !seenWidgets.contains(watched)) {
        seenWidgets.insert(watched);
        connect(watched, &QObject::destroyed, this, [this](QObject* gone) { seenWidgets.remove(gone); });
        const auto* label = watched->findChild<QLabel*>(QStringLiteral("labelToastText"));
        const SeenToast toast{label ? label->text() : QString(), watched->property("toastType").toInt()};
        const QPair<QPointer<QObject>, SeenToast> source(watched, toast);
        // A toast that moves to another window is shown again, but it is no second notice.
        if (sources.contains(source))
            return false;
        sources.append(source);
        toasts.append(toast);
        emit SigToast(toast.text, toast.type);
    }
    return QObject::eventFilter(watched, event);
}

char* toString(const SeenToast& toast)
{
    return QTest::toString(QStringLiteral("\"%1\" (type %2)").arg(toast.text).arg(toast.type));
}
