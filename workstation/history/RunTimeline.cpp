// SPDX-License-Identifier: Apache-2.0

#include "RunTimeline.h"

#include "SpanWords.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QScrollBar>
#include <QToolTip>

#include <cmath>

namespace
{
constexpr qint64 shortestTime = 20; // microseconds across the whole width
constexpr int scrollSteps = 100000;
constexpr int reach = 3; // pixels beside a narrow bar that count as on it
constexpr double zoomStep = 1.25;
} // namespace

RunTimeline::RunTimeline(QWidget* parent) : QAbstractScrollArea(parent)
{
    setObjectName(QStringLiteral("timelineRun"));
    setAccessibleName(QStringLiteral("时间线"));
    setFocusPolicy(Qt::StrongFocus);
    viewport()->setMouseTracking(true);
    connect(horizontalScrollBar(), &QScrollBar::valueChanged, this, [this](int value) {
        if (!isUpdating)
            from = (rows.GetEnd() - length) * value / scrollSteps;
        viewport()->update();
    });
}

void RunTimeline::ShowSpans(const RpaRunSpans& spans)
{
    rows = TimelineRows(spans);
    from = 0;
    length = qMax(shortestTime, rows.GetEnd());
    Select(-1, -1);
    UpdateBars();
}

bool RunTimeline::Shows(const RpaRunSpans& spans) const
{
    return rows.GetCount() == spans.spans.size() && !spans.spans.isEmpty() && spans.sums.isEmpty() &&
           rows.GetSpan(0).start == spans.spans.first().start &&
           rows.GetSpan(rows.GetCount() - 1).start == spans.spans.constLast().start;
}

void RunTimeline::Select(int row, int span)
{
    selectedRow = row;
    selected = span;
    emit SigSelected(TextOf(row, span));
    viewport()->update();
    if (row < 0)
        return;
    const int top = row * RowHeight();
    if (top < verticalScrollBar()->value() ||
        top + RowHeight() > verticalScrollBar()->value() + verticalScrollBar()->pageStep())
        verticalScrollBar()->setValue(top - verticalScrollBar()->pageStep() / 2);
    if (span < 0)
        return;
    const RpaRunSpan& shown = rows.GetSpan(span);
    if (shown.start + shown.duration < from || shown.start > from + length) {
        from = qBound<qint64>(0, shown.start - length / 2, qMax<qint64>(0, rows.GetEnd() - length));
        UpdateBars();
    }
}

QString RunTimeline::TextOf(int row, int span) const
{
    if (span >= 0)
        return SpanWords::Span(rows.GetSpan(span));
    if (row < 0)
        return QString();
    const TimelineRow& shown = rows.GetRows().at(row);
    QStringList lines{SpanWords::Place(shown.place)};
    for (const RpaRunSpanSum& sum : shown.sums)
        lines << SpanWords::Sum(sum);
    return lines.join(QLatin1Char('\n'));
}

int RunTimeline::RowAt(const QPoint& place) const
{
    const int offset = place.y() - RowHeight() + verticalScrollBar()->value();
    const int row = offset / RowHeight();
    return place.y() < RowHeight() || offset < 0 || row >= rows.GetRows().size() ? -1 : row;
}

int RunTimeline::SpanAt(const QPoint& place) const
{
    const int number = RowAt(place);
    if (number < 0 || place.x() < TitleWidth())
        return -1;
    const TimelineRow& row = rows.GetRows().at(number);
    int best = -1;
    int nearest = reach + 1;
    const qint64 last = TimeAt(place.x() + reach);
    for (int i = rows.FirstAt(row, TimeAt(place.x() - reach)); rows.GoesOnAt(row, i, last); ++i) {
        const QRect rect = RectOf(number, row.spans.at(i));
        const int distance = place.x() < rect.left() ? rect.left() - place.x() : place.x() - rect.right();
        if (distance < nearest) {
            nearest = distance;
            best = row.spans.at(i);
        }
        if (nearest <= 0)
            break;
    }
    return best;
}

void RunTimeline::Zoom(double factor, int x)
{
    const qint64 anchor = TimeAt(x);
    const double share = double(anchor - from) / double(length);
    length = qBound(shortestTime, qint64(double(length) / factor), qMax(shortestTime, rows.GetEnd()));
    from =
        qBound<qint64>(0, anchor - qint64(share * double(length)), qMax<qint64>(0, rows.GetEnd() - length));
    UpdateBars();
}

void RunTimeline::UpdateBars()
{
    const int visible = viewport()->height() - RowHeight();
    verticalScrollBar()->setPageStep(visible);
    verticalScrollBar()->setSingleStep(RowHeight());
    verticalScrollBar()->setRange(0, qMax(0, rows.GetRows().size() * RowHeight() - visible));
    const qint64 hidden = rows.GetEnd() - length;
    isUpdating = true;
    horizontalScrollBar()->setRange(0, hidden > 0 ? scrollSteps : 0);
    horizontalScrollBar()->setPageStep(
        hidden > 0 ? int(qMin<double>(1e8, double(scrollSteps) * double(length) / double(hidden))) : 1);
    horizontalScrollBar()->setSingleStep(qMax(1, horizontalScrollBar()->pageStep() / 20));
    horizontalScrollBar()->setValue(hidden > 0 ? int(from * scrollSteps / hidden) : 0);
    isUpdating = false;
    viewport()->update();
}

void RunTimeline::resizeEvent(QResizeEvent*)
{
    UpdateBars();
}

void RunTimeline::changeEvent(QEvent* event)
{
    QAbstractScrollArea::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        UpdateBars();
}

void RunTimeline::mousePressEvent(QMouseEvent* event)
{
    const int row = RowAt(event->pos());
    if (event->button() != Qt::LeftButton || row < 0)
        return;
    Select(row, SpanAt(event->pos()));
    emit SigShowPlace(rows.GetRows().at(row).place);
}

void RunTimeline::wheelEvent(QWheelEvent* event)
{
    if (!event->modifiers().testFlag(Qt::ControlModifier)) {
        QAbstractScrollArea::wheelEvent(event);
        return;
    }
    Zoom(std::pow(zoomStep, event->angleDelta().y() / 120.0), int(event->position().x()));
    event->accept();
}

void RunTimeline::keyPressEvent(QKeyEvent* event)
{
    const int middle = (TitleWidth() + viewport()->width()) / 2;
    switch (event->key()) {
    case Qt::Key_Up:
        return StepRow(-1);
    case Qt::Key_Down:
        return StepRow(1);
    case Qt::Key_Left:
        return Step(-1);
    case Qt::Key_Right:
        return Step(1);
    case Qt::Key_Plus:
    case Qt::Key_Equal:
        return Zoom(zoomStep, middle);
    case Qt::Key_Minus:
        return Zoom(1 / zoomStep, middle);
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (selectedRow >= 0)
            emit SigShowPlace(rows.GetRows().at(selectedRow).place);
        return;
    default:
        QAbstractScrollArea::keyPressEvent(event);
    }
}

void RunTimeline::StepRow(int by)
{
    if (rows.IsEmpty())
        return;
    const int row = qBound(0, selectedRow + by, rows.GetRows().size() - 1);
    Select(row, rows.GetRows().at(row).spans.value(0, -1));
}

void RunTimeline::Step(int by)
{
    if (selectedRow < 0)
        return StepRow(1);
    const QVector<int>& spans = rows.GetRows().at(selectedRow).spans;
    if (!spans.isEmpty())
        Select(selectedRow, spans.at(qBound(0, spans.indexOf(selected) + by, spans.size() - 1)));
}

bool RunTimeline::viewportEvent(QEvent* event)
{
    if (event->type() != QEvent::ToolTip)
        return QAbstractScrollArea::viewportEvent(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    const int row = RowAt(help->pos());
    QToolTip::showText(help->globalPos(), TextOf(row, SpanAt(help->pos())), viewport());
    return true;
}
