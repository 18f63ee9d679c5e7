// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QObject>
#include <QPointer>
#include <QRect>
#include <QScreen>

class QWidget;

// Keeps a window within what its screen has free, whatever scale the screen is drawn at.
class WindowFit : public QObject
{
    Q_OBJECT

public:
    // The window owns it.
    explicit WindowFit(QWidget* shownWindow);

    // The least size of the window's content where that much is free, in logical pixels.
    static QSize LeastSize(const QSize& free);
    // The same place, or the nearest that lies within what is free.
    static QRect Within(const QRect& wanted, const QRect& free);

    // Fits the window into this area.
    void Fit(const QRect& free);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void FollowScreen();

    QWidget* const window;
    QPointer<QScreen> screen;
};
