// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaProblems/RpaProblem.h>

#include <QString>

class QTreeWidgetItem;

// How many problems there are; those put aside count by themselves.
struct ProblemCounts
{
    int errors = 0;
    int warnings = 0;
    int hints = 0;
    int ignored = 0;

    void Add(const RpaProblem& problem, bool isIgnored);
    // In the user's words.
    QString GetText() const;
};

// What a row shows: a problem, and why the author put it aside; empty: not at all.
struct ProblemRow
{
    RpaProblem problem;
    QString reason;

    // Whether it looks the same.
    bool operator==(const ProblemRow& other) const;
};

// One row of the list for one problem.
namespace ProblemRows
{
enum Column
{
    MessageColumn,
    RemedyColumn,
    PlaceColumn
};

// The caller takes the row.
QTreeWidgetItem* Make(const ProblemRow& shown);

// The problem of a row; none of a row that is null.
RpaProblem Get(const QTreeWidgetItem* row);

// What a fix does, in a few words.
QString FixText(RpaProblemFix fix);

// Where it is, in a few words.
QString PlaceText(const RpaProblemPlace& place);
} // namespace ProblemRows
