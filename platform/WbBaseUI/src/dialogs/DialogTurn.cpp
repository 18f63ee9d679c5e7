// SPDX-License-Identifier: Apache-2.0

#include "DialogTurn_p.h"

#include <QApplication>
#include <QEvent>
#include <QEventLoop>

DialogTurn* DialogTurn::Instance()
{
    static QPointer<DialogTurn> instance; // goes with the application object
    if (!instance) {
        instance = new DialogTurn;
        instance->setParent(QCoreApplication::instance());
    }
    return instance;
}

void DialogTurn::Open(QDialog* dialog)
{
    DialogTurn* const turn = Instance();
    if (turn->waiting.isEmpty())
        QCoreApplication::instance()->installEventFilter(turn);
    turn->waiting.append(dialog);
    turn->OpenNext();
}

bool DialogTurn::eventFilter(QObject* watched, QEvent* event)
{
    // A window that goes is the modal one until it has gone.
    if (event->type() == QEvent::Hide && watched->isWidgetType())
        QMetaObject::invokeMethod(
            this, [this] { OpenNext(); }, Qt::QueuedConnection);
    return QObject::eventFilter(watched, event);
}

void DialogTurn::OpenNext()
{
    waiting.removeAll(nullptr);
    if (!waiting.isEmpty() && !QApplication::activeModalWidget()) {
        const QPointer<QDialog> next = waiting.takeFirst();
        opened.append(next);
        next->open();
    }
    if (waiting.isEmpty())
        QCoreApplication::instance()->removeEventFilter(this);
}

QDialog* DialogTurn::Blocking(const QDialog* dialog) const
{
    for (const QPointer<QDialog>& other : opened) {
        // A dialog is never the child window of one that it has nothing to do with.
        bool isAbove = false;
        for (const QWidget* widget = dialog; widget; widget = widget->parentWidget())
            isAbove = isAbove || widget == other;
        if (other && other->isVisible() && !isAbove)
            return other;
    }
    return nullptr;
}

bool DialogTurn::Await(QDialog* dialog)
{
    DialogTurn* const turn = Instance();
    const QPointer<QDialog> guard = dialog;
    while (QDialog* other = guard ? turn->Blocking(guard) : nullptr) {
        QEventLoop loop;
        connect(other, &QDialog::finished, &loop, &QEventLoop::quit);
        connect(other, &QObject::destroyed, &loop, &QEventLoop::quit);
        connect(dialog, &QObject::destroyed, &loop, &QEventLoop::quit);
        if (loop.exec() < 0)
            return false; // the application ends
    }
    turn->opened.removeAll(nullptr);
    return guard;
}
