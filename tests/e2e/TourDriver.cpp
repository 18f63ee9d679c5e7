// SPDX-License-Identifier: Apache-2.0

#include "TourDriver.h"

#include "TourReport.h"

#include <QAbstractButton>
#include <QCursor>
#include <QDialog>
#include <QInputMethodEvent>
#include <QProcess>
#include <QScreen>
#include <QThread>
#include <QWindow>
#include <QtTest/qtest_widgets.h>
#include <QtTest>

#include <future>
#include <memory>

namespace
{
constexpr auto lookEvery = std::chrono::milliseconds(15);

// Popups take all input from other windows, modal windows from those below them.
QWidget* InputRoot()
{
    if (QWidget* popup = QApplication::activePopupWidget())
        return popup;
    return QApplication::activeModalWidget();
}

QWidget* FindBelow(QWidget* root, const QString& objectName)
{
    if (root->isVisible() && root->objectName() == objectName)
        return root;
    for (QWidget* child : root->findChildren<QWidget*>(objectName))
        if (child->isVisible())
            return child;
    return nullptr;
}

// The widget that would get a press at that place, when it is the widget meant or a part of it.
QWidget* TargetAt(QWidget* widget, const QPoint& place)
{
    if (!widget || !widget->isVisible() || !widget->isEnabled() || !widget->rect().contains(place))
        return nullptr;
    QWidget* root = InputRoot();
    if (root && root != widget->window() && !root->isAncestorOf(widget))
        return nullptr;
    QWidget* top = QApplication::widgetAt(widget->mapToGlobal(place));
    return top == widget || (top && widget->isAncestorOf(top)) ? top : nullptr;
}

QPoint Middle(QWidget* widget)
{
    return widget->rect().center();
}

// The mouse and the keys of the display; the thread of the tour waits for them, the windows do not.
void UseDisplay(const QStringList& acts)
{
    QProcess display;
    display.start(QStringLiteral("xdotool"), acts);
    if (!display.waitForFinished() || display.exitCode() != 0)
        throw TourFailure(QStringLiteral("no mouse and keys of the display: is xdotool installed?"));
}

// The display counts in its own points, the windows in those of the scale they are drawn at.
QStringList MoveTo(const QPoint& place)
{
    const QPoint point = (QPointF(place) * qApp->devicePixelRatio()).toPoint();
    return {QStringLiteral("mousemove"), QStringLiteral("--sync"), QString::number(point.x()),
            QString::number(point.y())};
}

QWidget* KeyTarget()
{
    if (QWidget* popup = QApplication::activePopupWidget())
        return popup->focusWidget() ? popup->focusWidget() : popup;
    QWidget* focus = QApplication::focusWidget();
    QWidget* modal = QApplication::activeModalWidget();
    // While a busy window manager has not given a new dialog the keyboard, keys would reach what lies behind it.
    return focus && modal && focus->window() != modal->window() ? nullptr : focus;
}
} // namespace

TourDriver::TourDriver(TourReport* reportTo, QWidget* mainWindow) : report(reportTo), window(mainWindow) {}

void TourDriver::Step(const QString& name, const std::function<void()>& act)
{
    const auto start = Clock::now();
    stepName = name;
    picture = QImage();
    bool held = true;
    QString message;
    try {
        act();
    } catch (const TourFailure& failure) {
        held = false;
        message = QString::fromStdString(failure.what());
    }
    const auto ms = std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - start).count();
    if (picture.isNull() || !held)
        picture = Grab();
    report->Add(name, held, ms, picture, message);
    if (!held)
        CloseLeftovers();
}

void TourDriver::TakePicture()
{
    picture = Grab();
}

void TourDriver::UntilCalm()
{
    // A notice stays while the mouse is on it.
    OnGui([this] { QCursor::setPos(window->mapToGlobal(window->rect().bottomLeft() + QPoint(2, -2))); });
    Until(QStringLiteral("the end of the notices"), &TourDriver::ShowsNoNotice, std::chrono::seconds(30));
}

bool TourDriver::ShowsNoNotice()
{
    for (const QWidget* each : QApplication::allWidgets())
        if (each->isVisible() && each->objectName() == QLatin1String("WbToast"))
            return false;
    return true;
}

QImage TourDriver::Grab()
{
    // What has just been opened is on the screen once its window is exposed and two looks in a row see the
    // same; a picture that never comes to rest (a busy sign turns) is taken as it is.
    constexpr int mostLooks = 12;
    QImage last;
    for (int i = 0; i < mostLooks; ++i) {
        const QImage next = OnGui([this] { return GrabOnce(); });
        if (!next.isNull() && next == last)
            break;
        last = next;
        QThread::msleep(60);
    }
    OnGui([this] { texts.Note(stepName); });
    return last;
}

QImage TourDriver::GrabOnce()
{
    for (QWindow* each : QGuiApplication::topLevelWindows())
        if (each->isVisible() && !each->isExposed())
            return {};
    const QRect frame = window->frameGeometry();
    return window->screen()->grabWindow(0, frame.x(), frame.y(), frame.width(), frame.height()).toImage();
}

void TourDriver::Until(const QString& what, const std::function<bool()>& condition,
                       std::chrono::milliseconds within)
{
    const auto deadline = Clock::now() + within;
    while (!OnGui(condition)) {
        if (Clock::now() > deadline)
            throw TourFailure(QStringLiteral("waited in vain for: %1").arg(what));
        QThread::msleep(lookEvery.count());
    }
}

TourDriver::Finder TourDriver::Named(const QString& objectName)
{
    return [objectName]() -> QWidget* {
        if (QWidget* root = InputRoot())
            return FindBelow(root, objectName);
        for (QWidget* top : QApplication::topLevelWidgets())
            if (QWidget* found = FindBelow(top, objectName))
                return found;
        return nullptr;
    };
}

TourDriver::Finder TourDriver::DialogButton(const QString& text)
{
    return [text]() -> QWidget* {
        QWidget* dialog = QApplication::activeModalWidget();
        if (!dialog)
            return nullptr;
        for (QAbstractButton* button : dialog->findChildren<QAbstractButton*>()) {
            QString shown = button->text();
            if (button->isVisible() && shown.remove(QLatin1Char('&')).section(QLatin1Char('('), 0, 0) == text)
                return button;
        }
        return nullptr;
    };
}

void TourDriver::Click(const QString& what, const Finder& finder, Qt::MouseButton button)
{
    ClickAt(what, finder, &Middle, button);
}

void TourDriver::ClickAt(const QString& what, const Finder& finder,
                         const std::function<QPoint(QWidget*)>& place, Qt::MouseButton button)
{
    QPointer<QWidget> target;
    QPoint local;
    Until(QStringLiteral("a click on %1").arg(what), [&] {
        QWidget* widget = finder();
        const QPoint inside = widget ? place(widget) : QPoint();
        target = TargetAt(widget, inside);
        if (target)
            local = target->mapFrom(widget, inside);
        return !target.isNull();
    });
    Post([target, local, button] {
        if (target) {
            QCursor::setPos(target->mapToGlobal(local));
            QTest::mousePress(target, button, Qt::NoModifier, local);
        }
        if (target) {
            QTest::mouseRelease(target, button, Qt::NoModifier, local);
        }
    });
}

void TourDriver::ClickUntil(const QString& what, const Finder& finder, const std::function<bool()>& condition)
{
    constexpr int most = 5;
    for (int i = 1;; ++i) {
        Click(what, finder);
        try {
            Until(QStringLiteral("what a click on %1 brings").arg(what), condition,
                  std::chrono::milliseconds(500));
            return;
        } catch (const TourFailure&) {
            if (i == most)
                throw;
        }
    }
}

void TourDriver::Hover(const QString& what, const Finder& finder)
{
    HoverAt(what, finder, &Middle);
}

void TourDriver::HoverAt(const QString& what, const Finder& finder,
                         const std::function<QPoint(QWidget*)>& place)
{
    Until(QStringLiteral("the mouse on %1").arg(what), [&] {
        QWidget* widget = finder();
        const QPoint inside = widget ? place(widget) : QPoint();
        if (!TargetAt(widget, inside))
            return false;
        QCursor::setPos(widget->mapToGlobal(inside));
        return widget->underMouse();
    });
}

void TourDriver::Drag(const QString& what, const Finder& from,
                      const std::function<QPoint(QWidget*)>& fromPlace, const Finder& to,
                      const std::function<QPoint(QWidget*)>& toPlace, const std::function<bool()>& arrived)
{
    QPoint start;
    QPoint end;
    Until(QStringLiteral("both ends of a drag of %1").arg(what), [&] {
        QWidget* source = from();
        QWidget* target = to();
        if (!source || !target || !TargetAt(source, fromPlace(source)) || !TargetAt(target, toPlace(target)))
            return false;
        start = source->mapToGlobal(fromPlace(source));
        end = target->mapToGlobal(toPlace(target));
        return true;
    });
    UseDisplay(MoveTo(start) + QStringList{QStringLiteral("mousedown"), QStringLiteral("1")});
    constexpr int steps = 8;
    for (int step = 1; step <= steps; ++step)
        UseDisplay(MoveTo(start + (end - start) * step / steps));
    // A target answers movements, not a mouse at rest.
    constexpr int mostMovements = 100;
    bool there = OnGui(arrived);
    for (int i = 1; !there && i <= mostMovements; ++i) {
        UseDisplay(MoveTo(end + QPoint(i % 2, 0)));
        there = OnGui(arrived);
    }
    UseDisplay({QStringLiteral("mouseup"), QStringLiteral("1")});
    if (!there)
        throw TourFailure(QStringLiteral("%1 was not taken where it was dragged").arg(what));
}

bool TourDriver::MayDrop()
{
    const QCursor* carried = QGuiApplication::overrideCursor();
    return carried && carried->shape() != Qt::ForbiddenCursor;
}

// A person would click a window that a busy window manager left without the keyboard.
bool TourDriver::HasKeyTarget() const
{
    if (KeyTarget())
        return true;
    QWidget* asked = InputRoot() ? InputRoot()->window() : window.data();
    if (!asked->isActiveWindow())
        asked->activateWindow();
    return false;
}

void TourDriver::Type(const QString& text)
{
    Until(QStringLiteral("a place to type"), [this] { return HasKeyTarget(); });
    OnGui([&] { texts.NoteTyped(text); });
    const bool latin = std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < 128; });
    Post([text, latin] {
        if (latin) {
            QTest::keyClicks(KeyTarget(), text);
            return;
        }
        QInputMethodEvent commit;
        commit.setCommitString(text);
        QApplication::sendEvent(KeyTarget(), &commit);
    });
}

void TourDriver::Key(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    Until(QStringLiteral("a place for a key"), [this] { return HasKeyTarget(); });
    Post([key, modifiers] { QTest::keyClick(KeyTarget(), key, modifiers); });
}

void TourDriver::PressOnDisplay(const QString& key)
{
    UseDisplay({QStringLiteral("key"), key});
}

void TourDriver::Post(const std::function<void()>& act)
{
    // Not waited for to its end: an act that opens a dialog returns when the dialog is closed.
    auto begun = std::make_shared<std::promise<void>>();
    const std::future<void> beginning = begun->get_future();
    QMetaObject::invokeMethod(
        qApp,
        [act, begun] {
            begun->set_value();
            act();
        },
        Qt::QueuedConnection);
    if (beginning.wait_for(std::chrono::seconds(20)) != std::future_status::ready)
        throw TourFailure(QStringLiteral("the window does not react"));
    // The act itself has run, or waits in a dialog of its own, once the event loop comes round again.
    OnGui([] {});
}

void TourDriver::CloseLeftovers()
{
    for (int i = 0; i < 5; ++i) {
        const bool open = OnGui([] {
            if (QWidget* root = InputRoot()) {
                root->close();
                return true;
            }
            return false;
        });
        if (!open)
            return;
        OnGui([] {}); // what waited for its end goes on
    }
}
