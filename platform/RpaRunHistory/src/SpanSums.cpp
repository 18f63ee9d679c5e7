// SPDX-License-Identifier: Apache-2.0

#include "SpanSums_p.h"

void SpanSums::Add(const RpaRunSpan& span)
{
    if (span.kind != RpaSpanKind::Position)
        Add({span.kind, span.place, 1, span.duration, span.duration, span.error.isEmpty() ? 0 : 1});
}

void SpanSums::Add(const RpaRunSpanSum& sum)
{
    const QString name = sum.place.processName + QLatin1Char('\n') + sum.place.statementId +
                         QLatin1Char('\n') + QString::number(sum.place.line);
    const auto key = qMakePair(name, int(sum.kind));
    const auto found = places.constFind(key);
    if (found == places.constEnd()) {
        if (sums.size() >= placesAtMost)
            return;
        places.insert(key, sums.size());
        sums.append(sum);
        return;
    }
    RpaRunSpanSum& known = sums[*found];
    known.count += sum.count;
    known.total += sum.total;
    known.longest = qMax(known.longest, sum.longest);
    known.failures += sum.failures;
}
