// SPDX-License-Identifier: Apache-2.0

#include "IconDrawing_p.h"
#include "SvgPath_p.h"

#include <QPainter>
#include <QPen>
#include <QXmlStreamReader>

namespace
{
qreal Number(const QXmlStreamAttributes& attributes, const char* name, qreal otherwise = 0)
{
    const QStringRef value = attributes.value(QLatin1String(name));
    return value.isEmpty() ? otherwise : value.toDouble();
}

QPainterPath PolylinePath(const QString& points)
{
    return ParseSvgPath(QLatin1Char('M') + points);
}

QPainterPath ShapePath(const QStringRef& element, const QXmlStreamAttributes& a)
{
    QPainterPath path;
    if (element == QLatin1String("path")) {
        path = ParseSvgPath(a.value(QLatin1String("d")).toString());
    } else if (element == QLatin1String("circle")) {
        const qreal radius = Number(a, "r");
        path.addEllipse(QPointF(Number(a, "cx"), Number(a, "cy")), radius, radius);
    } else if (element == QLatin1String("rect")) {
        const qreal radius = Number(a, "rx");
        path.addRoundedRect(Number(a, "x"), Number(a, "y"), Number(a, "width"), Number(a, "height"), radius,
                            radius);
    } else if (element == QLatin1String("line")) {
        path.moveTo(Number(a, "x1"), Number(a, "y1"));
        path.lineTo(Number(a, "x2"), Number(a, "y2"));
    } else if (element == QLatin1String("polyline")) {
        path = PolylinePath(a.value(QLatin1String("points")).toString());
    }
    return path;
}

QRectF ReadViewBox(const QXmlStreamAttributes& attributes)
{
    const QVector<QStringRef> parts = attributes.value(QLatin1String("viewBox")).split(QLatin1Char(' '));
    if (parts.size() != 4)
        return {0, 0, 24, 24};
    return {parts[0].toDouble(), parts[1].toDouble(), parts[2].toDouble(), parts[3].toDouble()};
}
} // namespace

IconDrawing IconDrawing::FromSvg(const QByteArray& svg)
{
    IconDrawing drawing;
    qreal inheritedStroke = 0;
    QXmlStreamReader xml(svg);
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        const QXmlStreamAttributes attributes = xml.attributes();
        if (xml.name() == QLatin1String("svg")) {
            drawing.viewBox = ReadViewBox(attributes);
            inheritedStroke = Number(attributes, "stroke-width", 1);
            continue;
        }
        Shape shape;
        shape.path = ShapePath(xml.name(), attributes);
        if (shape.path.isEmpty())
            continue;
        const bool filled = attributes.value(QLatin1String("fill")) == QLatin1String("currentColor");
        const bool unstroked = attributes.value(QLatin1String("stroke")) == QLatin1String("none");
        shape.fillOpacity = filled ? Number(attributes, "fill-opacity", 1) : 0;
        shape.strokeWidth = unstroked ? 0 : Number(attributes, "stroke-width", inheritedStroke);
        shape.strokeOpacity = Number(attributes, "stroke-opacity", 1);
        drawing.shapes.push_back(shape);
    }
    return drawing;
}

void IconDrawing::Paint(QPainter& painter, const QRectF& target, const QColor& color) const
{
    if (viewBox.isEmpty())
        return;
    const qreal scale = qMin(target.width() / viewBox.width(), target.height() / viewBox.height());
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(target.center());
    painter.scale(scale, scale);
    painter.translate(-viewBox.center());
    for (const Shape& shape : shapes) {
        QColor fill = color;
        fill.setAlphaF(color.alphaF() * shape.fillOpacity);
        QColor stroke = color;
        stroke.setAlphaF(color.alphaF() * shape.strokeOpacity);
        painter.setBrush(shape.fillOpacity > 0 ? QBrush(fill) : QBrush(Qt::NoBrush));
        painter.setPen(shape.strokeWidth > 0
                           ? QPen(stroke, shape.strokeWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin)
                           : QPen(Qt::NoPen));
        painter.drawPath(shape.path);
    }
    painter.restore();
}
