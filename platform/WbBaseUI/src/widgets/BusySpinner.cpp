// SPDX-License-Identifier: Apache-2.0

#include "BusySpinner_p.h"

#include <OxBase/DpiTool.h>
#include <WbBaseUI/WbTheme.h>

#include <QPainter>
#include <QTimerEvent>

namespace
{
constexpr int kSize = 36;
constexpr int kLineWidth = 3;
constexpr int kFrameMilliseconds = 16;
constexpr int kTurnMilliseconds = 900;
constexpr int kFullTurn = 360 * 16;
constexpr int kArcLength = 100 * 16;
} // namespace

BusySpinner::BusySpinner(QWidget* parent) : QWidget(parent)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize BusySpinner::sizeHint() const
{
    const int side = DpiTool::ScaleDefault(kSize);
    return {side, side};
}

void BusySpinner::paintEvent(QPaintEvent*)
{
    const WbTheme* theme = WbTheme::Instance();
    const qreal width = DpiTool::ScaleDefault(kLineWidth);
    const QRectF circle = QRectF(rect()).adjusted(width, width, -width, -width);
    const qint64 time = clock.isValid() ? clock.elapsed() % kTurnMilliseconds : 0;
    const int angle = int(-time * kFullTurn / kTurnMilliseconds);

    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(theme->Color(WbColor::Border), width));
    painter.drawEllipse(circle);
    painter.setPen(QPen(theme->Color(WbColor::Accent), width, Qt::SolidLine, Qt::RoundCap));
    painter.drawArc(circle, angle + 90 * 16, -kArcLength);
}

void BusySpinner::showEvent(QShowEvent*)
{
    clock.start();
    timer.start(kFrameMilliseconds, this);
}

void BusySpinner::hideEvent(QHideEvent*)
{
    timer.stop();
}

void BusySpinner::timerEvent(QTimerEvent* event)
{
    if (event->timerId() == timer.timerId())
        update();
}
