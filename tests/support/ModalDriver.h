// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QDialog>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QTimer>
#include <QWidget>

#include <chrono>
#include <functional>

// Answers modal dialogs in the place of a user, without waits of its own. Steps are queued before the act
// that opens the dialogs; each modal window that appears is handed to the next step from inside that window's
// event loop. A window that nobody expects, that outlives the deadline or that never comes fails the running
// test, and whatever is open is rejected so that the test ends.
//
//     ModalDriver modals;
//     modals.Then([](QWidget* box) { QTest::mouseClick(box->findChild<QPushButton*>(...), Qt::LeftButton);
//     }); editor.Close();
class ModalDriver : public QObject
{
    Q_OBJECT

public:
    using Step = std::function<void(QWidget* modal)>;

    explicit ModalDriver(std::chrono::milliseconds deadline = std::chrono::seconds(5));
    // Fails the running test when steps are left over.
    ~ModalDriver() override;

    // Queues a step for the next modal window that appears.
    void Then(const Step& step);

    // The same for a window of a known class; another class fails the test and is rejected.
    template <typename Window>
    void ThenIn(std::function<void(Window*)> step);

    // Steps that have not been reached yet, and windows met so far.
    int GetPendingCount() const { return steps.size(); }
    int GetSeenCount() const { return seen; }

    // Presses the button with this text (mnemonic marks ignored) in the window. False when there is no such
    // button.
    static bool Press(QWidget* window, const QString& buttonText);

    // Closes a window as its close button does.
    static void Reject(QWidget* window);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Meet(const QPointer<QWidget>& window);
    void GiveUp();
    void Fail(const QString& reason);

    QList<Step> steps;
    QTimer watchdog;
    int seen = 0;
};

template <typename Window>
void ModalDriver::ThenIn(std::function<void(Window*)> step)
{
    Then([this, step](QWidget* modal) {
        if (auto* window = qobject_cast<Window*>(modal)) {
            step(window);
            return;
        }
        Fail(QStringLiteral("expected a %1, met a %2")
                 .arg(QLatin1String(Window::staticMetaObject.className()),
                      QLatin1String(modal->metaObject()->className())));
        Reject(modal);
    });
}
