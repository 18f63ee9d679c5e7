// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaEngineCore/RpaRunSpan.h>

#include <QString>
#include <QVector>

// What a run did at one place.
struct TimelineRow
{
    RpaRunPlace place;
    RpaSpanKind kind = RpaSpanKind::Position; // of its first call
    QVector<int> spans;                       // numbers, in the order in which they ended
    QVector<qint64> earliest;                 // of each, the earliest start of it and those behind it
    QVector<RpaRunSpanSum> sums;
    qint64 firstStart = 0;
};

// The spans of a run by place, in the order in which the run first came there. A hundred thousand are sorted
// within some tens of milliseconds.
class TimelineRows
{
public:
    TimelineRows() = default;
    explicit TimelineRows(const RpaRunSpans& spans);

    const QVector<TimelineRow>& GetRows() const { return rows; }
    const RpaRunSpan& GetSpan(int number) const { return spans.at(number); }
    int GetCount() const { return spans.size(); }
    bool IsEmpty() const { return rows.isEmpty(); }
    // Microseconds at which the last one ended; at least 1.
    qint64 GetEnd() const { return end; }

    // Of the row's spans, as places in its list: those that lie in the time, the first and the one behind the
    // last.
    int FirstAt(const TimelineRow& row, qint64 time) const;
    bool GoesOnAt(const TimelineRow& row, int index, qint64 time) const;

private:
    void SortIn(int number, TimelineRow* row);

    QVector<RpaRunSpan> spans;
    QVector<TimelineRow> rows;
    qint64 end = 1;
};
