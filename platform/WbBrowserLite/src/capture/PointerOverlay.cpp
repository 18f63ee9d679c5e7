// SPDX-License-Identifier: Apache-2.0

#include "BrowserPointer_p.h"

#include <OxBase/DpiTool.h>
#include <WbBaseUI/WbTheme.h>

#include <QCoreApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QWebEngineView>

namespace
{
constexpr int overlayPadding = 6;
constexpr int cornerRadius = 4;

QColor Tinted(WbColor color, int alpha)
{
    QColor tinted = WbTheme::Instance()->Color(color);
    tinted.setAlpha(alpha);
    return tinted;
}

void PaintBubble(QPainter& painter, const QRect& rect, const QString& text, WbColor fill, WbColor ink)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(WbTheme::Instance()->Color(fill));
    painter.drawRoundedRect(rect, cornerRadius, cornerRadius);
    painter.setPen(WbTheme::Instance()->Color(ink));
    const QRect inner = rect.adjusted(overlayPadding, 0, -overlayPadding, 0);
    painter.drawText(inner, Qt::AlignCenter,
                     painter.fontMetrics().elidedText(text, Qt::ElideRight, inner.width()));
}
} // namespace

PointerOverlay::PointerOverlay(QWidget* parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("browserPointerOverlay"));
    setMouseTracking(true);
    setCursor(Qt::CrossCursor);
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(QStringLiteral("正在捕获网页元素"));
}

void PointerOverlay::Mark(const QRectF& rect, const QString& text)
{
    marked = rect;
    label = text;
    update();
}

void PointerOverlay::SetHint(const QString& text)
{
    hint = text;
}

void PointerOverlay::SetView(QWebEngineView* shown)
{
    view = shown;
}

void PointerOverlay::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(WbTheme::Instance()->Color(WbColor::Accent), 2));
    if (!marked.isEmpty()) {
        painter.setBrush(Tinted(WbColor::Accent, 40));
        painter.drawRect(marked.adjusted(-1, -1, 1, 1));
    }
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(QRectF(rect()).adjusted(1, 1, -1, -1));
    if (!marked.isEmpty())
        PaintLabel(painter);
    const QFontMetrics metrics = painter.fontMetrics();
    const QSize size(qMin(metrics.horizontalAdvance(hint) + 4 * overlayPadding, width() - 16),
                     metrics.height() + 10);
    // Out of the way of what it would cover.
    const bool below = marked.top() < size.height() + 16 && !marked.isEmpty();
    const int top = below ? height() - size.height() - 8 : 8;
    PaintBubble(painter, QRect(QPoint((width() - size.width()) / 2, top), size), hint, WbColor::ToolTip,
                WbColor::ToolTipText);
}

void PointerOverlay::PaintLabel(QPainter& painter) const
{
    const QFontMetrics metrics = painter.fontMetrics();
    const int widest = qMin(width() - 4, DpiTool::ScaleDefault(360));
    const QSize size(qMin(metrics.horizontalAdvance(label) + 2 * overlayPadding + 2, widest),
                     metrics.height() + 6);
    int top = int(marked.bottom()) + 4;
    if (top + size.height() > height())
        top = qMax(2, int(marked.top()) - size.height() - 4);
    const int left = qBound(2, int(marked.left()), qMax(2, width() - size.width() - 2));
    PaintBubble(painter, QRect(QPoint(left, top), size), label, WbColor::Accent, WbColor::TextOnAccent);
}

void PointerOverlay::mouseMoveEvent(QMouseEvent* event)
{
    emit SigMoved(event->localPos());
}

void PointerOverlay::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        emit SigPressed(event->localPos());
}

void PointerOverlay::mouseReleaseEvent(QMouseEvent* event)
{
    event->accept();
}

void PointerOverlay::mouseDoubleClickEvent(QMouseEvent* event)
{
    event->accept(); // its first press has picked already
}

void PointerOverlay::wheelEvent(QWheelEvent* event)
{
    // Scrolling must stay possible, or only what is in sight could be captured.
    if (view && view->focusProxy())
        QCoreApplication::sendEvent(view->focusProxy(), event);
    Mark(QRectF(), QString());
    event->accept();
}

void PointerOverlay::contextMenuEvent(QContextMenuEvent* event)
{
    event->accept();
}

void PointerOverlay::leaveEvent(QEvent*)
{
    Mark(QRectF(), QString());
}

void PointerOverlay::hideEvent(QHideEvent* event)
{
    QWidget::hideEvent(event);
    if (!event->spontaneous())
        emit SigHidden();
}
