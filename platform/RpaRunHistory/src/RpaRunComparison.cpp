// SPDX-License-Identifier: Apache-2.0

#include <RpaRunHistory/RpaRunComparison.h>

#include <QHash>
#include <QPair>

#include <algorithm>

namespace
{
QVector<RpaRunSpan> CallsOf(const RpaRunDetails& details)
{
    QVector<RpaRunSpan> calls;
    calls.reserve(details.spans.spans.size());
    for (const RpaRunSpan& span : details.spans.spans)
        if (span.kind != RpaSpanKind::Position)
            calls.append(span);
    return calls;
}

bool IsSameCall(const RpaRunSpan& one, const RpaRunSpan& other)
{
    return one.kind == other.kind && one.place == other.place && one.call == other.call &&
           one.input == other.input && one.result == other.result && one.error == other.error;
}

QString ValueOf(const RpaRunRecord& run, const QString& name)
{
    for (const RpaRunValue& value : run.parameters)
        if (value.name == name)
            return value.text;
    return QString();
}

bool HasValue(const RpaRunRecord& run, const QString& name)
{
    return std::any_of(run.parameters.begin(), run.parameters.end(),
                       [&](const RpaRunValue& value) { return value.name == name; });
}

QVector<RpaParameterDifference> CompareParameters(const RpaRunRecord& before, const RpaRunRecord& after)
{
    QVector<RpaParameterDifference> differences;
    for (const RpaRunValue& value : after.parameters)
        if (!HasValue(before, value.name) || ValueOf(before, value.name) != value.text)
            differences.append({value.name, ValueOf(before, value.name), value.text});
    for (const RpaRunValue& value : before.parameters)
        if (!HasValue(after, value.name))
            differences.append({value.name, value.text, QString()});
    return differences;
}

// Adds up how long each place took.
class PlaceTimes
{
public:
    void Add(const RpaRunDetails& details, bool isAfter)
    {
        for (const RpaRunSpan& span : details.spans.spans)
            if (span.kind != RpaSpanKind::Position)
                Add(span.place, 1, span.duration, isAfter);
        for (const RpaRunSpanSum& sum : details.spans.sums)
            Add(sum.place, sum.count, sum.total, isAfter);
    }

    QVector<RpaPlaceDifference> Take()
    {
        const auto difference = [](const RpaPlaceDifference& place) {
            return qAbs(place.timeAfter - place.timeBefore);
        };
        std::stable_sort(times.begin(), times.end(),
                         [&](const RpaPlaceDifference& one, const RpaPlaceDifference& other) {
                             return difference(one) > difference(other);
                         });
        return times;
    }

private:
    void Add(const RpaRunPlace& place, qint64 count, qint64 time, bool isAfter)
    {
        const auto key = qMakePair(place.processName + QLatin1Char('\n') + place.statementId, place.line);
        const auto found = numbers.constFind(key);
        const int number = found == numbers.constEnd() ? times.size() : *found;
        if (found == numbers.constEnd()) {
            numbers.insert(key, number);
            times.append({place, 0, 0, 0, 0});
        }
        RpaPlaceDifference& known = times[number];
        (isAfter ? known.countAfter : known.countBefore) += count;
        (isAfter ? known.timeAfter : known.timeBefore) += time;
    }

    QVector<RpaPlaceDifference> times;
    QHash<QPair<QString, int>, int> numbers;
};
} // namespace

RpaRunComparison RpaRunComparison::Of(const RpaRunRecord& before, const RpaRunDetails& detailsBefore,
                                      const RpaRunRecord& after, const RpaRunDetails& detailsAfter)
{
    RpaRunComparison comparison;
    comparison.parameters = CompareParameters(before, after);
    comparison.spansBefore = CallsOf(detailsBefore);
    comparison.spansAfter = CallsOf(detailsAfter);
    comparison.isPartial = !detailsBefore.spans.sums.isEmpty() || !detailsAfter.spans.sums.isEmpty();
    const int countBefore = comparison.spansBefore.size();
    const int countAfter = comparison.spansAfter.size();
    int same = 0;
    while (same < qMin(countBefore, countAfter) &&
           IsSameCall(comparison.spansBefore.at(same), comparison.spansAfter.at(same)))
        ++same;
    comparison.spanBefore = same < countBefore ? same : -1;
    comparison.spanAfter = same < countAfter ? same : -1;
    PlaceTimes times;
    times.Add(detailsAfter, true);
    times.Add(detailsBefore, false);
    comparison.places = times.Take();
    return comparison;
}
