// SPDX-License-Identifier: Apache-2.0

#include "ValueChip_p.h"
#include "ValueText_p.h"

#include <OxBase/DpiTool.h>
#include <WbBaseUI/WbTheme.h>

#include <QFontMetricsF>
#include <QPainter>
#include <QTextDocument>

namespace
{
constexpr int padding = 6;

QString LabelOf(const QTextFormat& format)
{
    return ValueText::Label(format.property(ValueChip::pythonProperty).toString());
}
} // namespace

void ValueChip::Paint(QPainter& painter, const QRectF& rect, const QString& label)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(WbTheme::Instance()->Color(WbColor::AccentSoft));
    const QRectF box = rect.adjusted(1, 1, -1, -1);
    painter.drawRoundedRect(box, DpiTool::ScaleDefault(4), DpiTool::ScaleDefault(4));
    painter.setPen(WbTheme::Instance()->Color(WbColor::AccentText));
    const qreal inner = DpiTool::ScaleDefault(padding) - 2;
    const QRectF place = box.adjusted(inner, 0, -inner, 0);
    painter.drawText(place, Qt::AlignCenter,
                     QFontMetricsF(painter.font()).elidedText(label, Qt::ElideMiddle, place.width() + 1));
    painter.restore();
}

QSizeF ValueChip::intrinsicSize(QTextDocument* document, int position, const QTextFormat& format)
{
    Q_UNUSED(position);
    const QFontMetricsF metrics(document->defaultFont());
    const qreal most = DpiTool::ScaleDefault(150);
    const qreal width = metrics.horizontalAdvance(LabelOf(format)) + 2 * DpiTool::ScaleDefault(padding);
    return {qMin(width, most), metrics.height() - 2}; // no higher than the line it stands in
}

void ValueChip::drawObject(QPainter* painter, const QRectF& rect, QTextDocument* document, int position,
                           const QTextFormat& format)
{
    Q_UNUSED(position);
    painter->setFont(document->defaultFont());
    Paint(*painter, rect, LabelOf(format));
}
