// SPDX-License-Identifier: Apache-2.0

#include "WindowFit.h"

#include <QEvent>
#include <QWidget>
#include <QWindow>

namespace
{
constexpr QSize smallest(960, 540); // everything that matters has its place in it
} // namespace

WindowFit::WindowFit(QWidget* shownWindow) : QObject(shownWindow), window(shownWindow)
{
    window->setMinimumSize(smallest);
    window->installEventFilter(this);
}

QSize WindowFit::LeastSize(const QSize& free)
{
    return smallest.boundedTo(free);
}

QRect WindowFit::Within(const QRect& wanted, const QRect& free)
{
    QRect place(wanted.topLeft(), wanted.size().boundedTo(free.size()));
    place.moveRight(qMin(place.right(), free.right()));
    place.moveBottom(qMin(place.bottom(), free.bottom()));
    place.moveLeft(qMax(place.left(), free.left()));
    place.moveTop(qMax(place.top(), free.top()));
    return place;
}

void WindowFit::Fit(const QRect& free)
{
    // The system's frame takes its part; it is known once the window has been shown.
    const QRect outer = window->frameGeometry();
    const QRect inner = window->geometry();
    const QMargins frame(inner.left() - outer.left(), inner.top() - outer.top(),
                         outer.right() - inner.right(), outer.bottom() - inner.bottom());
    const QRect room = free.marginsRemoved(frame);
    window->setMinimumSize(LeastSize(room.size()));
    if (!window->isMaximized() && !window->isFullScreen())
        window->setGeometry(Within(inner, room));
}

bool WindowFit::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Show) {
        connect(window->windowHandle(), &QWindow::screenChanged, this, &WindowFit::FollowScreen,
                Qt::UniqueConnection);
        FollowScreen();
    }
    return QObject::eventFilter(watched, event);
}

void WindowFit::FollowScreen()
{
    if (screen)
        screen->disconnect(this);
    screen = window->windowHandle()->screen();
    if (!screen)
        return; // the last one has been unplugged
    connect(screen, &QScreen::availableGeometryChanged, this, &WindowFit::Fit);
    Fit(screen->availableGeometry());
}
