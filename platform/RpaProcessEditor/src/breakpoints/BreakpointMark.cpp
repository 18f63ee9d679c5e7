// SPDX-License-Identifier: Apache-2.0

#include "BreakpointMark_p.h"

#include <WbBaseUI/WbTheme.h>

#include <QPainter>

BreakpointMark BreakpointMark::Of(const RpaBreakpoint& breakpoint)
{
    const QString terms = Terms(breakpoint);
    BreakpointMark mark;
    mark.look = !breakpoint.enabled ? Disabled : breakpoint.logText.isEmpty() ? Stops : Logs;
    mark.hasTerms = !breakpoint.condition.isEmpty() || breakpoint.hits > 0;
    mark.text = breakpoint.enabled ? QStringLiteral("断点") : QStringLiteral("断点（已停用）");
    if (!terms.isEmpty())
        mark.text += QStringLiteral("，") + terms;
    return mark;
}

QString BreakpointMark::Terms(const RpaBreakpoint& breakpoint)
{
    QStringList terms;
    if (!breakpoint.condition.isEmpty())
        terms << QStringLiteral("条件：") + breakpoint.condition;
    if (breakpoint.hits > 0) {
        const QString text = breakpoint.hitRule == RpaHitRule::FromThenOn ? QStringLiteral("从第 %1 次起")
                             : breakpoint.hitRule == RpaHitRule::Exactly  ? QStringLiteral("只在第 %1 次")
                                                                          : QStringLiteral("每 %1 次");
        terms << text.arg(breakpoint.hits);
    }
    if (!breakpoint.logText.isEmpty())
        terms << QStringLiteral("写日志：") + breakpoint.logText;
    return terms.join(QStringLiteral("，"));
}

void BreakpointMark::Paint(QPainter& painter, const QRectF& area) const
{
    if (look == None)
        return;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor colour = WbTheme::Instance()->Color(WbColor::Breakpoint);
    painter.setPen(QPen(colour, 1.5));
    painter.setBrush(look == Disabled ? QBrush(Qt::NoBrush) : QBrush(colour));
    const QPointF centre = area.center();
    const qreal half = area.width() / 2 - 1;
    if (look == Logs)
        painter.drawPolygon(QPolygonF({centre + QPointF(0, -half), centre + QPointF(half, 0),
                                       centre + QPointF(0, half), centre + QPointF(-half, 0)}));
    else
        painter.drawEllipse(centre, half, half);
    if (hasTerms) {
        const WbColor across = look == Disabled ? WbColor::Breakpoint : WbColor::Surface;
        painter.setPen(QPen(WbTheme::Instance()->Color(across), 2));
        painter.drawLine(centre - QPointF(half / 2, 0), centre + QPointF(half / 2, 0));
    }
    painter.restore();
}

void BreakpointMark::PaintArrow(QPainter& painter, const QRectF& area, bool innermost)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor colour = WbTheme::Instance()->Color(WbColor::WarningText);
    const QColor ground = WbTheme::Instance()->Color(WbColor::Surface);
    const QRectF inner = area.adjusted(2, 2, -2, -2);
    const QPolygonF arrow({inner.topLeft(), QPointF(inner.right(), inner.center().y()), inner.bottomLeft()});
    // On a breakpoint it stands out by the ground around it.
    painter.setPen(QPen(ground, 4.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(ground);
    painter.drawPolygon(arrow);
    painter.setPen(QPen(colour, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(innermost ? colour : ground);
    painter.drawPolygon(arrow);
    painter.restore();
}
