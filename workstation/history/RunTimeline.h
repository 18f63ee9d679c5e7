// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "TimelineRows.h"

#include <QAbstractScrollArea>

class QPainter;

// What a run did outside of itself: a row for each statement or line, its calls as bars over time. A click goes
// to the place, the mouse over a bar shows its values; wheel with Ctrl, + and - zoom, arrows go from call to
// call. Calls that are narrower than a pixel are drawn together.
class RunTimeline : public QAbstractScrollArea
{
    Q_OBJECT

public:
    explicit RunTimeline(QWidget* parent = nullptr);

    // The whole run is shown at first.
    void ShowSpans(const RpaRunSpans& spans);
    // Whether these are shown already: a run only adds to its spans.
    bool Shows(const RpaRunSpans& spans) const;
    // Number among the spans; -1: none.
    int GetSelected() const { return selected; }
    void Select(int row, int span);
    const TimelineRows& GetRows() const { return rows; }
    // Where the span stands in the viewport, at least one pixel wide.
    QRect RectOf(int row, int span) const;
    int RowAt(const QPoint& place) const;
    // Number of the span there; -1: none. A bar that is narrow is found a few pixels beside it.
    int SpanAt(const QPoint& place) const;
    void Zoom(double factor, int x);

signals:
    // The user asked for the place of a row.
    void SigShowPlace(const RpaRunPlace& place);
    // The text of what is selected; empty for nothing.
    void SigSelected(const QString& text);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void PaintScale(QPainter* painter) const;
    void PaintRow(QPainter* painter, int row) const;
    void PaintBars(QPainter* painter, const TimelineRow& row, const QRect& area) const;
    void UpdateBars();
    void Step(int by);
    void StepRow(int by);
    int RowHeight() const;
    int TitleWidth() const;
    int Top(int row) const;
    int XOf(qint64 time) const;
    qint64 TimeAt(int x) const;
    QString TextOf(int row, int span) const;

    TimelineRows rows;
    qint64 from = 0;
    qint64 length = 1; // of the time that is shown
    int selectedRow = -1;
    int selected = -1;
    bool isUpdating = false; // the scroll bar follows, not the time
};
