// SPDX-License-Identifier: Apache-2.0

#include "BusySpinner_p.h"

#include <OxBase/DpiTool.h>
#include <WbBaseUI/WbTheme.h>

#include <QPainter>
#include <QTimerEvent>

namespace
{
constexpr int spinnerSize = 36;
constexpr int spinnerLineWidth = 3;
constexpr int frameMilliseconds = 16;
constexpr int turnMilliseconds = 900;
constexpr int fullTurn = 360 * 16;
constexpr int arcLength = 100 * 16;
} // namespace

BusySpinner::BusySpinner(QWidget* parent) : QWidget(parent)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize BusySpinner::sizeHint() const
{
    const int side = DpiTool::ScaleDefault(spinnerSize);
    return {side, side};
}

void BusySpinner::paintEvent(QPaintEvent*)
{
    const WbTheme* theme = WbTheme::Instance();
    const qreal width = DpiTool::ScaleDefault(spinnerLineWidth);
    const QRectF circle = QRectF(rect()).adjusted(width, width, -width, -width);
    const qint64 time = clock.isValid() ? clock.elapsed() % turnMilliseconds : 0;
    const int angle = int(-time * fullTurn / turnMilliseconds);

    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(theme->Color(WbColor::Border), width));
    painter.drawEllipse(circle);
    painter.setPen(QPen(theme->Color(WbColor::Accent), width, Qt::SolidLine, Qt::RoundCap));
    painter.drawArc(circle, angle + 90 * 16, -arcLength);
}

void BusySpinner::showEvent(QShowEvent*)
{
    clock.start();
    timer.start(frameMilliseconds, this);
}

void BusySpinner::timerEvent(QTimerEvent* event)
{
    if (event->timerId() == timer.timerId())
        update();
}
