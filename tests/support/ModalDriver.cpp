// SPDX-License-Identifier: Apache-2.0

#include "ModalDriver.h"

#include <QAbstractButton>
#include <QApplication>
#include <QEvent>
#include <QtTest>

ModalDriver::ModalDriver(std::chrono::milliseconds deadline)
{
    watchdog.setSingleShot(true);
    watchdog.setInterval(deadline);
    connect(&watchdog, &QTimer::timeout, this, &ModalDriver::GiveUp);
    qApp->installEventFilter(this);
}

ModalDriver::~ModalDriver()
{
    qApp->removeEventFilter(this);
    if (!steps.isEmpty())
        Fail(QStringLiteral("%1 expected modal window(s) never appeared").arg(steps.size()));
}

void ModalDriver::Then(const Step& step)
{
    steps.append(step);
}

bool ModalDriver::Press(QWidget* window, const QString& buttonText)
{
    const auto buttons = window->findChildren<QAbstractButton*>();
    for (QAbstractButton* button : buttons) {
        if (button->isVisible() && button->text().remove(QLatin1Char('&')) == buttonText) {
            QTest::mouseClick(button, Qt::LeftButton);
            return true;
        }
    }
    return false;
}

void ModalDriver::Reject(QWidget* window)
{
    if (auto* dialog = qobject_cast<QDialog*>(window))
        dialog->reject();
    else
        window->close();
}

bool ModalDriver::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Show && watched->isWidgetType()) {
        auto* window = static_cast<QWidget*>(watched);
        if (window->isWindow() && window->isModal()) {
            // Show comes before the window's own event loop runs; the step belongs inside that loop.
            QTimer::singleShot(0, this, [this, guarded = QPointer<QWidget>(window)] { Meet(guarded); });
        }
    }
    return QObject::eventFilter(watched, event);
}

void ModalDriver::Meet(const QPointer<QWidget>& window)
{
    if (!window || !window->isVisible())
        return;
    ++seen;
    if (steps.isEmpty()) {
        Fail(QStringLiteral("unexpected modal window %1 \"%2\"")
                 .arg(QLatin1String(window->metaObject()->className()), window->windowTitle()));
        Reject(window);
        return;
    }
    watchdog.start();
    const Step step = steps.takeFirst();
    step(window);
    if (!QApplication::activeModalWidget())
        watchdog.stop();
}

void ModalDriver::GiveUp()
{
    while (QWidget* open = QApplication::activeModalWidget()) {
        Fail(QStringLiteral("modal window %1 \"%2\" stayed open")
                 .arg(QLatin1String(open->metaObject()->className()), open->windowTitle()));
        Reject(open);
        if (QApplication::activeModalWidget() == open) {
            open->setWindowModality(Qt::NonModal);
            open->hide();
        }
    }
}

void ModalDriver::Fail(const QString& reason)
{
    QTest::qFail(qPrintable(reason), __FILE__, __LINE__);
}
