// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QColor>
#include <QPainterPath>
#include <QRectF>

#include <vector>

class QPainter;

// One icon of the family, read from the subset of SVG in which the family is drawn: path, circle, rect, line
// and polyline on a 24 px grid, stroked or filled with "currentColor". Painting it needs no SVG library, so
// the icons look the same on every system that has Qt's painter.
class IconDrawing
{
public:
    static IconDrawing FromSvg(const QByteArray& svg);

    bool IsEmpty() const { return shapes.empty(); }
    void Paint(QPainter& painter, const QRectF& target, const QColor& color) const;

private:
    struct Shape
    {
        QPainterPath path;
        qreal strokeWidth = 0;
        qreal fillOpacity = 0;
        qreal strokeOpacity = 1;
    };

    std::vector<Shape> shapes;
    QRectF viewBox;
};
