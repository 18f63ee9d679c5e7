// SPDX-License-Identifier: Apache-2.0

#include "IconEngine_p.h"

#include <WbBaseUI/WbIcons.h>

#include <QPainter>

#include <memory>

namespace
{
WbColor ColorFor(QIcon::Mode mode, QIcon::State state, WbColor normal)
{
    if (mode == QIcon::Disabled)
        return WbColor::TextDisabled;
    // A colour that tells something, red for a fault, tells it in a selected row too.
    const bool plain = normal == WbColor::Text || normal == WbColor::TextSecondary;
    return plain && (mode == QIcon::Selected || state == QIcon::On) ? WbColor::AccentText : normal;
}
} // namespace

void IconEngine::paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state)
{
    const qreal ratio = painter->device() ? painter->device()->devicePixelRatioF() : 1.0;
    const int side = qMin(rect.width(), rect.height());
    const QPixmap picture = WbIcons::Pixmap(name, side, ColorFor(mode, state, color), ratio);
    const QPoint corner = rect.center() - QPoint((side - 1) / 2, (side - 1) / 2);
    painter->drawPixmap(QRect(corner, QSize(side, side)), picture);
}

QPixmap IconEngine::pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state)
{
    return WbIcons::Pixmap(name, qMin(size.width(), size.height()), ColorFor(mode, state, color));
}

QString IconEngine::key() const
{
    return QStringLiteral("WbIcons");
}
