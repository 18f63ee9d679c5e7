// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaEngineCore/RpaRunSpan.h>

#include <QHash>
#include <QPair>

// Calls added up by place and kind; of a bounded number of places.
class SpanSums
{
public:
    static constexpr int placesAtMost = 10000;

    // Positions are passed over: they have no duration.
    void Add(const RpaRunSpan& span);
    void Add(const RpaRunSpanSum& sum);

    bool IsEmpty() const { return sums.isEmpty(); }
    // In no particular order.
    QVector<RpaRunSpanSum> Get() const { return sums; }

private:
    QVector<RpaRunSpanSum> sums;
    QHash<QPair<QString, int>, int> places; // of each place and kind, where it is in sums
};
