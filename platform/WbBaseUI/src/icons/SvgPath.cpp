// SPDX-License-Identifier: Apache-2.0

#include "SvgPath_p.h"

#include <QLineF>
#include <QtMath>

#include <cmath>

namespace
{
class Reader
{
public:
    explicit Reader(const QString& t) : text(t) {}

    bool AtCommand()
    {
        SkipSeparators();
        return position < text.size() && text.at(position).isLetter();
    }

    char TakeCommand() { return text.at(position++).toLatin1(); }

    bool HasNumber()
    {
        SkipSeparators();
        return position < text.size() && !text.at(position).isLetter();
    }

    qreal Number()
    {
        SkipSeparators();
        const int start = position;
        bool dot = false;
        while (position < text.size()) {
            const QChar c = text.at(position);
            const bool sign = c == QLatin1Char('-') && position == start;
            if (!c.isDigit() && !sign && (c != QLatin1Char('.') || dot))
                break;
            dot = dot || c == QLatin1Char('.');
            ++position;
        }
        if (position == start) {
            // Something unreadable: end the text rather than stand still before it.
            position = text.size();
        }
        return text.midRef(start, position - start).toDouble();
    }

    QPointF Point()
    {
        const qreal x = Number();
        return {x, Number()};
    }

private:
    void SkipSeparators()
    {
        while (position < text.size() &&
               (text.at(position).isSpace() || text.at(position) == QLatin1Char(',')))
            ++position;
    }

    const QString& text;
    int position = 0;
};

struct Arc
{
    qreal rx = 0;
    qreal ry = 0;
    bool large = false;
    bool sweep = false;
};

// The icons use unrotated arcs only, so the ellipse's axes are the page's.
void AppendArc(QPainterPath& path, const Arc& arc, const QPointF& to)
{
    const QPointF from = path.currentPosition();
    if (from == to || arc.rx <= 0 || arc.ry <= 0) {
        path.lineTo(to);
        return;
    }
    // On the ellipse scaled to a unit circle the centre stands on the middle line of the chord.
    const QPointF a(from.x() / arc.rx, from.y() / arc.ry);
    const QPointF b(to.x() / arc.rx, to.y() / arc.ry);
    const QLineF chord(a, b);
    const qreal half = qMin(chord.length() / 2, 1.0);
    const qreal height = std::sqrt(1.0 - half * half) * (arc.large == arc.sweep ? -1 : 1);
    const QPointF normal(-chord.dy() / chord.length(), chord.dx() / chord.length());
    const QPointF centre = chord.center() + normal * height;

    const auto angle = [&centre](const QPointF& p) {
        return qRadiansToDegrees(std::atan2(centre.y() - p.y(), p.x() - centre.x()));
    };
    const qreal start = angle(a);
    qreal span = angle(b) - start;
    if (arc.sweep && span > 0)
        span -= 360;
    else if (!arc.sweep && span < 0)
        span += 360;
    path.arcTo(QRectF((centre.x() - 1) * arc.rx, (centre.y() - 1) * arc.ry, 2 * arc.rx, 2 * arc.ry), start,
               span);
}

class Builder
{
public:
    explicit Builder(const QString& text) : in(text) {}

    QPainterPath Build()
    {
        char command = 0;
        while (in.AtCommand() || (command && in.HasNumber())) {
            if (in.AtCommand())
                command = in.TakeCommand();
            if (!Apply(command))
                break;
            // Further pairs after a move are lines.
            if (command == 'M' || command == 'm')
                command = command == 'M' ? 'L' : 'l';
            else if (command == 'Z' || command == 'z')
                command = 0;
        }
        return path;
    }

private:
    bool Apply(char command)
    {
        const bool relative = command >= 'a';
        origin = relative ? path.currentPosition() : QPointF();
        const char kind = relative ? char(command - 'a' + 'A') : command;
        const QPointF previousControl = lastControl;
        switch (kind) {
        case 'M':
            path.moveTo(Next());
            break;
        case 'L':
            path.lineTo(Next());
            break;
        case 'H':
            path.lineTo(origin.x() + in.Number(), path.currentPosition().y());
            break;
        case 'V':
            path.lineTo(path.currentPosition().x(), origin.y() + in.Number());
            break;
        case 'C':
            Cubic(Next());
            return true;
        case 'S':
            Cubic(2 * path.currentPosition() - previousControl);
            return true;
        case 'Q':
            Quadratic();
            break;
        case 'A':
            ArcTo();
            break;
        case 'Z':
            path.closeSubpath();
            break;
        default:
            return false;
        }
        lastControl = path.currentPosition();
        return true;
    }

    QPointF Next() { return origin + in.Point(); }

    void Cubic(const QPointF& first)
    {
        const QPointF second = Next();
        const QPointF end = Next();
        path.cubicTo(first, second, end);
        lastControl = second;
    }

    void Quadratic()
    {
        const QPointF control = Next();
        path.quadTo(control, Next());
    }

    void ArcTo()
    {
        Arc arc;
        arc.rx = in.Number();
        arc.ry = in.Number();
        in.Number();
        arc.large = in.Number() != 0;
        arc.sweep = in.Number() != 0;
        AppendArc(path, arc, Next());
    }

    Reader in;
    QPainterPath path;
    QPointF origin;
    QPointF lastControl;
};
} // namespace

QPainterPath ParseSvgPath(const QString& text)
{
    return Builder(text).Build();
}
