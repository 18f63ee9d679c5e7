// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaRunHistory/RpaRunDetails.h>
#include <RpaRunHistory/RpaRunHistoryExport.h>
#include <RpaRunHistory/RpaRunRecord.h>

#include <QVector>

// A parameter of two runs; empty where a run has none of that name.
struct RpaParameterDifference
{
    QString name;
    QString before;
    QString after;
};

// How long a place took in two runs, microseconds, and how often it was called.
struct RpaPlaceDifference
{
    RpaRunPlace place;
    qint64 countBefore = 0;
    qint64 countAfter = 0;
    qint64 timeBefore = 0;
    qint64 timeAfter = 0;
};

// Two runs of one app side by side: what the later one did otherwise. Plain record; any thread.
struct RPARUNHISTORY_EXPORT RpaRunComparison
{
    // Durations are no difference, and neither are samples of positions.
    static RpaRunComparison Of(const RpaRunRecord& before, const RpaRunDetails& detailsBefore,
                               const RpaRunRecord& after, const RpaRunDetails& detailsAfter);

    QVector<RpaParameterDifference> parameters; // those that differ, in the order of the later run
    // The first call that differs, as its number among the calls of each run; -1: that run has none there. Both
    // -1: none differs.
    int spanBefore = -1;
    int spanAfter = -1;
    // Calls that are kept, without positions.
    QVector<RpaRunSpan> spansBefore;
    QVector<RpaRunSpan> spansAfter;
    // Whether the first calls of a run are kept as sums only: then what differs may have begun there.
    bool isPartial = false;
    QVector<RpaPlaceDifference> places; // the largest difference of time first
};
