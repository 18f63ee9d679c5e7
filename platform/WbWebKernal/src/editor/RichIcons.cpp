// SPDX-License-Identifier: Apache-2.0

#include "RichIcons_p.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>

namespace
{
using Draw = void (*)(QPainter&);

// All coordinates on a field of 20 by 20.
void Line(QPainter& p, qreal x1, qreal y1, qreal x2, qreal y2)
{
    p.drawLine(QPointF(x1, y1), QPointF(x2, y2));
}

void Letter(QPainter& p, const QString& text, bool bold, bool italic,
            const QRectF& box = QRectF(0, 0, 20, 20))
{
    QFont font = p.font();
    font.setPixelSize(15);
    font.setBold(bold);
    font.setItalic(italic);
    p.setFont(font);
    p.drawText(box, Qt::AlignCenter, text);
}

void Lines(QPainter& p, qreal from, const QVector<qreal>& ends)
{
    qreal y = 4.5;
    for (const qreal end : ends) {
        Line(p, from, y, end, y);
        y += 3.7;
    }
}

void DrawBold(QPainter& p)
{
    Letter(p, QStringLiteral("B"), true, false);
}
void DrawItalic(QPainter& p)
{
    Letter(p, QStringLiteral("I"), false, true);
}

void DrawUnderline(QPainter& p)
{
    Letter(p, QStringLiteral("U"), false, false, QRectF(0, -1.5, 20, 20));
    Line(p, 4.5, 17.5, 15.5, 17.5);
}

void DrawStrike(QPainter& p)
{
    Letter(p, QStringLiteral("S"), false, false);
    Line(p, 3.5, 10.5, 16.5, 10.5);
}

void DrawBulletList(QPainter& p)
{
    for (const qreal y : {5.0, 10.0, 15.0}) {
        p.drawEllipse(QPointF(4, y), 0.7, 0.7);
        Line(p, 8, y, 17, y);
    }
}

void DrawNumberList(QPainter& p)
{
    QFont font = p.font();
    font.setPixelSize(7);
    p.setFont(font);
    int number = 1;
    for (const qreal y : {5.0, 10.0, 15.0}) {
        p.drawText(QRectF(1, y - 4, 6, 8), Qt::AlignCenter, QString::number(number++));
        Line(p, 8, y, 17, y);
    }
}

void DrawIndent(QPainter& p)
{
    Line(p, 3, 4, 17, 4);
    Line(p, 9, 8, 17, 8);
    Line(p, 9, 12, 17, 12);
    Line(p, 3, 16, 17, 16);
    p.drawPolyline(QPolygonF({{3.5, 7.5}, {6, 10}, {3.5, 12.5}}));
}

void DrawOutdent(QPainter& p)
{
    Line(p, 3, 4, 17, 4);
    Line(p, 9, 8, 17, 8);
    Line(p, 9, 12, 17, 12);
    Line(p, 3, 16, 17, 16);
    p.drawPolyline(QPolygonF({{6, 7.5}, {3.5, 10}, {6, 12.5}}));
}

void DrawAlignLeft(QPainter& p)
{
    Lines(p, 3, {17, 11, 17, 11});
}

void DrawAlignCentre(QPainter& p)
{
    Line(p, 3, 4.5, 17, 4.5);
    Line(p, 6, 8.2, 14, 8.2);
    Line(p, 3, 11.9, 17, 11.9);
    Line(p, 6, 15.6, 14, 15.6);
}

void DrawAlignRight(QPainter& p)
{
    Line(p, 3, 4.5, 17, 4.5);
    Line(p, 9, 8.2, 17, 8.2);
    Line(p, 3, 11.9, 17, 11.9);
    Line(p, 9, 15.6, 17, 15.6);
}

void DrawTextColour(QPainter& p)
{
    Letter(p, QStringLiteral("A"), false, false, QRectF(0, -2, 20, 20));
    p.fillRect(QRectF(4, 16, 12, 2.4), QColor(0xe5, 0x48, 0x4d));
}

void DrawBackColour(QPainter& p)
{
    p.fillRect(QRectF(3, 3, 14, 14), QColor(0xff, 0xd5, 0x4f));
    p.setPen(QColor(0x33, 0x33, 0x33));
    Letter(p, QStringLiteral("A"), false, false);
}

void DrawLink(QPainter& p)
{
    p.translate(10, 10);
    p.rotate(-45);
    p.drawRoundedRect(QRectF(-8, -3, 8.5, 6), 3, 3);
    p.drawRoundedRect(QRectF(-0.5, -3, 8.5, 6), 3, 3);
}

void DrawPicture(QPainter& p)
{
    p.drawRoundedRect(QRectF(2.5, 3.5, 15, 13), 1.5, 1.5);
    p.drawEllipse(QPointF(7, 7.5), 1.3, 1.3);
    p.drawPolyline(QPolygonF({{3, 15}, {8, 10.5}, {11, 13.5}, {13.5, 11}, {17, 14.5}}));
}

void DrawTable(QPainter& p)
{
    p.drawRoundedRect(QRectF(2.5, 3.5, 15, 13), 1.5, 1.5);
    Line(p, 2.5, 8, 17.5, 8);
    Line(p, 2.5, 12.2, 17.5, 12.2);
    Line(p, 10, 3.5, 10, 16.5);
}

void DrawUndo(QPainter& p)
{
    QPainterPath path(QPointF(4, 8));
    path.lineTo(12, 8);
    path.arcTo(QRectF(8, 8, 8, 8), 90, -180);
    path.lineTo(7, 16);
    p.drawPath(path);
    p.drawPolyline(QPolygonF({{7.5, 4.5}, {4, 8}, {7.5, 11.5}}));
}

void DrawRedo(QPainter& p)
{
    p.translate(20, 0);
    p.scale(-1, 1);
    DrawUndo(p);
}

void DrawFind(QPainter& p)
{
    p.drawEllipse(QPointF(8.5, 8.5), 5, 5);
    Line(p, 12.3, 12.3, 17, 17);
}

void DrawClearFormat(QPainter& p)
{
    Letter(p, QStringLiteral("T"), false, false, QRectF(-2, -1, 20, 20));
    Line(p, 12, 12, 17, 17);
    Line(p, 17, 12, 12, 17);
}

// In the order of RichGlyph.
constexpr Draw drawings[] = {DrawBold,       DrawItalic,     DrawUnderline,  DrawStrike,    DrawBulletList,
                             DrawNumberList, DrawIndent,     DrawOutdent,    DrawAlignLeft, DrawAlignCentre,
                             DrawAlignRight, DrawTextColour, DrawBackColour, DrawLink,      DrawPicture,
                             DrawTable,      DrawUndo,       DrawRedo,       DrawFind,      DrawClearFormat};

class GlyphEngine : public QIconEngine
{
public:
    explicit GlyphEngine(RichGlyph shown) : glyph(shown) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override
    {
        const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
        QColor colour = QGuiApplication::palette().color(group, QPalette::ButtonText);
        if (mode == QIcon::Disabled)
            colour.setAlphaF(0.4);
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->translate(rect.topLeft());
        painter->scale(rect.width() / 20.0, rect.height() / 20.0);
        painter->setPen(QPen(colour, 1.4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        drawings[int(glyph)](*painter);
        painter->restore();
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return pixmap;
    }

    QIconEngine* clone() const override { return new GlyphEngine(*this); }

private:
    RichGlyph glyph;
};
} // namespace

QIcon RichIcon(RichGlyph glyph)
{
    return QIcon(new GlyphEngine(glyph)); // the icon owns its engine
}
