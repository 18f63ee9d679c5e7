// SPDX-License-Identifier: Apache-2.0

#include "RunTimeline.h"
#include "SpanWords.h"

#include <WbBaseUI/WbTheme.h>

#include <QPainter>
#include <QScrollBar>

namespace
{
constexpr int mostTicks = 8;

QColor ColorOf(RpaSpanKind kind)
{
    switch (kind) {
    case RpaSpanKind::File:
        return WbTheme::Instance()->Color(WbColor::Accent);
    case RpaSpanKind::Excel:
        return WbTheme::Instance()->Color(WbColor::SuccessText);
    case RpaSpanKind::Http:
        return WbTheme::Instance()->Color(WbColor::WarningText);
    case RpaSpanKind::Browser:
        return WbTheme::Instance()->Color(WbColor::CodeKeyword);
    case RpaSpanKind::Dialog:
        return WbTheme::Instance()->Color(WbColor::CodeFunction);
    case RpaSpanKind::Mail:
        return WbTheme::Instance()->Color(WbColor::CodeString);
    case RpaSpanKind::Database:
        return WbTheme::Instance()->Color(WbColor::CodeNumber);
    default:
        return WbTheme::Instance()->Color(WbColor::TextSecondary);
    }
}

// 1, 2 or 5 times a power of ten, so that a few of them fill the length.
qint64 TickOf(qint64 length)
{
    qint64 tick = 1;
    for (int factor = 0; length / tick > mostTicks; factor = (factor + 1) % 3)
        tick = factor == 1 ? tick / 2 * 5 : tick * 2;
    return tick;
}
} // namespace

int RunTimeline::RowHeight() const
{
    return fontMetrics().height() * 3 / 2;
}

int RunTimeline::TitleWidth() const
{
    return qMin(viewport()->width() / 3, fontMetrics().averageCharWidth() * 34);
}

int RunTimeline::Top(int row) const
{
    return (row + 1) * RowHeight() - verticalScrollBar()->value();
}

int RunTimeline::XOf(qint64 time) const
{
    const int width = viewport()->width() - TitleWidth();
    const double share = double(time - from) / double(length);
    return TitleWidth() + int(qBound(-10.0, share, 10.0) * width);
}

qint64 RunTimeline::TimeAt(int x) const
{
    const int width = qMax(1, viewport()->width() - TitleWidth());
    return from + qint64(double(x - TitleWidth()) / width * double(length));
}

QRect RunTimeline::RectOf(int row, int span) const
{
    const RpaRunSpan& shown = rows.GetSpan(span);
    const int left = XOf(shown.start);
    const int margin = RowHeight() / 5;
    return QRect(left, Top(row) + margin, qMax(1, XOf(shown.start + shown.duration) - left),
                 RowHeight() - 2 * margin);
}

void RunTimeline::paintEvent(QPaintEvent*)
{
    QPainter painter(viewport());
    painter.fillRect(viewport()->rect(), WbTheme::Instance()->Color(WbColor::Field));
    if (rows.IsEmpty()) {
        painter.setPen(WbTheme::Instance()->Color(WbColor::TextSecondary));
        painter.drawText(viewport()->rect(), Qt::AlignCenter,
                         QStringLiteral("这次运行没有读写文件、访问网络或使用其他程序"));
        return;
    }
    const int first = qMax(0, verticalScrollBar()->value() / RowHeight());
    const int last = qMin(rows.GetRows().size(), first + viewport()->height() / RowHeight() + 2);
    for (int row = first; row < last; ++row)
        PaintRow(&painter, row);
    PaintScale(&painter);
}

void RunTimeline::PaintScale(QPainter* painter) const
{
    const QRect head(0, 0, viewport()->width(), RowHeight());
    painter->fillRect(head, WbTheme::Instance()->Color(WbColor::Stripe));
    const qint64 tick = TickOf(length);
    for (qint64 time = (from + tick - 1) / tick * tick; time <= from + length; time += tick) {
        const int x = XOf(time);
        painter->setPen(WbTheme::Instance()->Color(WbColor::Border));
        painter->drawLine(x, 0, x, viewport()->height());
        painter->setPen(WbTheme::Instance()->Color(WbColor::TextSecondary));
        painter->drawText(QRect(x + 3, 0, viewport()->width(), RowHeight()), Qt::AlignVCenter | Qt::AlignLeft,
                          SpanWords::Time(time));
    }
}

void RunTimeline::PaintRow(QPainter* painter, int number) const
{
    const TimelineRow& row = rows.GetRows().at(number);
    const QRect area(0, Top(number), viewport()->width(), RowHeight());
    if (number == selectedRow)
        painter->fillRect(area, WbTheme::Instance()->Color(WbColor::Selection));
    else if (number % 2 == 1)
        painter->fillRect(area, WbTheme::Instance()->Color(WbColor::Stripe));
    const QRect bars = area.adjusted(TitleWidth(), 0, 0, 0);
    painter->setClipRect(bars);
    PaintBars(painter, row, bars);
    if (number == selectedRow && selected >= 0) {
        painter->setPen(WbTheme::Instance()->Color(WbColor::FocusRing));
        painter->drawRect(RectOf(number, selected).adjusted(-1, -1, 0, 0));
    }
    painter->setClipping(false);
    const QRect title = QRect(area.topLeft(), QSize(TitleWidth(), area.height())).adjusted(6, 0, -6, 0);
    painter->setPen(WbTheme::Instance()->Color(WbColor::Text));
    painter->drawText(title, Qt::AlignVCenter | Qt::AlignLeft,
                      fontMetrics().elidedText(SpanWords::Place(row.place), Qt::ElideRight, title.width()));
}

void RunTimeline::PaintBars(QPainter* painter, const TimelineRow& row, const QRect& area) const
{
    const int margin = RowHeight() / 5;
    const QColor failed = WbTheme::Instance()->Color(WbColor::Danger);
    int painted[] = {-1, -1}; // pixels up to here have their bars; those that failed stand above the others
    for (int i = rows.FirstAt(row, from); rows.GoesOnAt(row, i, from + length); ++i) {
        const RpaRunSpan& span = rows.GetSpan(row.spans.at(i));
        const int left = qMax(area.left(), XOf(span.start));
        const int right = qMax(left + 1, XOf(span.start + span.duration));
        int& done = painted[span.error.isEmpty() ? 0 : 1];
        if (right <= done)
            continue;
        done = right;
        const bool point = span.kind == RpaSpanKind::Position;
        const int inset = point ? RowHeight() / 2 - 1 : margin;
        painter->fillRect(QRect(left, area.top() + inset, right - left, area.height() - 2 * inset),
                          span.error.isEmpty() ? ColorOf(span.kind) : failed);
    }
}
