// SPDX-License-Identifier: Apache-2.0

#include "TimelineRows.h"

#include <QHash>

#include <algorithm>

namespace
{
struct PlaceKey
{
    QString processName;
    QString statementId;
    int line;
};

bool operator==(const PlaceKey& one, const PlaceKey& other)
{
    return one.line == other.line && one.statementId == other.statementId &&
           one.processName == other.processName;
}

uint qHash(const PlaceKey& key, uint seed)
{
    return ::qHash(key.statementId, seed) ^ ::qHash(key.line, seed);
}

// Finds the row of a place, or makes it. A loop comes by the same places again and again.
class RowFinder
{
public:
    explicit RowFinder(QVector<TimelineRow>* target) : rows(target) {}

    TimelineRow* Of(const RpaRunPlace& place)
    {
        if (last >= 0 && rows->at(last).place == place)
            return &(*rows)[last];
        const PlaceKey key{place.processName, place.statementId, place.line};
        const auto found = numbers.constFind(key);
        if (found != numbers.constEnd()) {
            last = *found;
        } else {
            last = rows->size();
            numbers.insert(key, last);
            rows->append({place, RpaSpanKind::Position, {}, {}, {}, -1});
        }
        return &(*rows)[last];
    }

private:
    QVector<TimelineRow>* const rows;
    QHash<PlaceKey, int> numbers;
    int last = -1;
};
} // namespace

TimelineRows::TimelineRows(const RpaRunSpans& given) : spans(given.spans)
{
    RowFinder finder(&rows);
    for (const RpaRunSpanSum& sum : given.sums) {
        TimelineRow* const row = finder.Of(sum.place);
        row->sums.append(sum);
        row->kind = sum.kind;
        row->firstStart = 0; // it was there before everything that is kept
    }
    for (int number = 0; number < spans.size(); ++number)
        SortIn(number, finder.Of(spans.at(number).place));
    for (TimelineRow& row : rows) {
        row.earliest.resize(row.spans.size());
        qint64 earliest = end;
        for (int i = row.spans.size() - 1; i >= 0; --i)
            row.earliest[i] = earliest = qMin(earliest, spans.at(row.spans.at(i)).start);
    }
    std::stable_sort(rows.begin(), rows.end(), [](const TimelineRow& one, const TimelineRow& other) {
        return one.firstStart < other.firstStart;
    });
}

void TimelineRows::SortIn(int number, TimelineRow* row)
{
    const RpaRunSpan& span = spans.at(number);
    row->spans.append(number);
    if (row->kind == RpaSpanKind::Position)
        row->kind = span.kind;
    row->firstStart = row->firstStart < 0 ? span.start : qMin(row->firstStart, span.start);
    end = qMax(end, span.start + span.duration);
}

int TimelineRows::FirstAt(const TimelineRow& row, qint64 time) const
{
    const auto found =
        std::lower_bound(row.spans.begin(), row.spans.end(), time, [this](int number, qint64 wanted) {
            return spans.at(number).start + spans.at(number).duration < wanted;
        });
    return int(found - row.spans.begin());
}

bool TimelineRows::GoesOnAt(const TimelineRow& row, int index, qint64 time) const
{
    return index < row.spans.size() && row.earliest.at(index) <= time;
}
