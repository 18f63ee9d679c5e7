// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaProcessData/RpaValue.h>

// How a row compares its left value, with its right one where there is one.
enum class RpaComparison
{
    Equal,
    NotEqual,
    Greater,
    GreaterOrEqual,
    Less,
    LessOrEqual,
    Contains,
    ContainsNot,
    IsIn,
    IsNotIn,
    StartsWith,
    EndsWith,
    IsEmpty, // None, or a text, list or dictionary without content; 0 is not empty
    IsNotEmpty,
    IsNone,
    IsNotNone,
    Holds, // true in Python's sense
    HoldsNot,
};

// One comparison, and how it is joined to the one before it.
struct RPAPROCESSDATA_EXPORT RpaConditionRow
{
    bool isOr = false; // how it is joined to the row before it; "and" binds tighter, as in Python
    RpaValue left;
    RpaComparison comparison = RpaComparison::Equal;
    RpaValue right; // unused where the comparison needs none

    // Whether all is filled in that the comparison needs.
    bool IsComplete() const;
    // Of all four members.
    bool operator==(const RpaConditionRow& other) const;
};

// A Python condition as rows, for authors who do not write Python. Rows that were not changed are written as
// they were read; rows may be incomplete. Thread-safe.
class RPAPROCESSDATA_EXPORT RpaCondition
{
public:
    // More than this is read more easily as Python, and takes long to be shown as rows.
    static constexpr int mostRows = 50;
    static constexpr int mostCharacters = 20000;

    // Nothing, and the reason in Chinese, for a condition that rows would show wrongly.
    static std::optional<RpaCondition> Read(const QString& python, QString* reason = nullptr);

    // In their order; at most mostRows.
    const QVector<RpaConditionRow>& GetRows() const { return rows; }
    void SetRows(const QVector<RpaConditionRow>& changed) { rows = changed; }

    // The condition as one line of Python.
    QString ToPython() const;
    // The first incomplete row, -1 when there is none.
    int FindIncomplete() const;

    // Whether the comparison has a value on its right.
    static bool HasRight(RpaComparison comparison);

private:
    QVector<RpaConditionRow> rows;
    struct Origin
    {
        RpaConditionRow row;
        QString python;
    };
    QVector<Origin> origins;
    QVector<RpaConditionRow> readRows;
    QString source;
};
