// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "TourTexts.h"

#include <QApplication>
#include <QPoint>
#include <QPointer>
#include <QWidget>

#include <chrono>
#include <functional>
#include <stdexcept>

class TourReport;

// Why a step did not hold.
class TourFailure : public std::runtime_error
{
public:
    explicit TourFailure(const QString& reason) : std::runtime_error(reason.toStdString()) {}
};

// Drives the windows of this process as a user does, from a thread of its own: modal dialogs run nested event
// loops on the GUI thread, and a script that lived there would be stuck below them. Every look at a widget is
// carried out on the GUI thread; every act waits until what it acts on is visible, enabled and not covered by
// anything else.
class TourDriver
{
public:
    using Clock = std::chrono::steady_clock;
    using Finder = std::function<QWidget*()>; // called on the GUI thread; null: not there yet

    // region: window whose surroundings the pictures show.
    TourDriver(TourReport* report, QWidget* window);

    // Runs one step of the tour and reports it with a picture taken at its end.
    void Step(const QString& name, const std::function<void()>& act);

    // Takes the step's picture now, because what it shows is gone when the step ends.
    void TakePicture();

    // Waits until notices of earlier steps have gone, so that they do not lie over the picture.
    void UntilCalm();

    // Waits until the condition holds on the GUI thread; fails the step when it does not in time.
    void Until(const QString& what, const std::function<bool()>& condition,
               std::chrono::milliseconds within = std::chrono::seconds(20));

    // Runs something short on the GUI thread and brings back its result.
    template <typename Function>
    auto OnGui(Function function) -> decltype(function());

    // What could be read in all pictures until now. GUI thread.
    const TourTexts& GetTexts() const { return texts; }

    // A visible widget by object name, inside the active modal window or popup when there is one.
    static Finder Named(const QString& objectName);
    // A visible button with that text in the active modal window.
    static Finder DialogButton(const QString& text);

    void Click(const QString& what, const Finder& finder, Qt::MouseButton button = Qt::LeftButton);
    // Clicks at a place of a widget that is known only on the GUI thread.
    void ClickAt(const QString& what, const Finder& finder, const std::function<QPoint(QWidget*)>& place,
                 Qt::MouseButton button = Qt::LeftButton);
    // Clicks until the condition holds, a few times at most.
    void ClickUntil(const QString& what, const Finder& finder, const std::function<bool()>& condition);
    void Hover(const QString& what, const Finder& finder);
    void HoverAt(const QString& what, const Finder& finder, const std::function<QPoint(QWidget*)>& place);
    // Drags with the mouse of the display itself, which is what a drag between widgets needs. Lets go once
    // the condition holds above the target.
    void Drag(const QString& what, const Finder& from, const std::function<QPoint(QWidget*)>& fromPlace,
              const Finder& to, const std::function<QPoint(QWidget*)>& toPlace,
              const std::function<bool()>& arrived);
    // Whether the mouse carries something that may be dropped where it is.
    static bool MayDrop();

    // Types into the widget with the focus: keys for Latin text, an input method's commit for anything else.
    void Type(const QString& text);
    void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    // A key of the display itself, by its name there: only then the system opens a context menu.
    void PressOnDisplay(const QString& key);

private:
    void Post(const std::function<void()>& act);
    QImage Grab();
    QImage GrabOnce();
    static bool ShowsNoNotice();
    bool HasKeyTarget() const;
    void CloseLeftovers();

    TourReport* const report;
    const QPointer<QWidget> window;
    QString stepName;
    QImage picture;
    TourTexts texts;
};

template <typename Function>
auto TourDriver::OnGui(Function function) -> decltype(function())
{
    using Result = decltype(function());
    if constexpr (std::is_void_v<Result>) {
        QMetaObject::invokeMethod(
            qApp, [&] { function(); }, Qt::BlockingQueuedConnection);
    } else {
        Result result{};
        QMetaObject::invokeMethod(
            qApp, [&] { result = function(); }, Qt::BlockingQueuedConnection);
        return result;
    }
}
