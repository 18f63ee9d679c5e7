// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "PythonParts_p.h"

#include <RpaProcessData/RpaCondition.h>

// Takes a Python condition apart into rows, one for each comparison that "and" and "or" join.
class ConditionReader
{
public:
    // What a row calls empty, as it is written; PythonTokens tell it from other tuples.
    static constexpr const char* emptyThings = "(None, \"\", [], {})";
    static const char* SignOf(RpaComparison comparison);

    explicit ConditionReader(const QString& python) : source(python) {}

    bool Read();
    const QVector<RpaConditionRow>& GetRows() const { return rows; }
    const QVector<QString>& GetSources() const { return sources; }
    QString GetReason() const { return reason; }

private:
    bool Fail(const QString& why);
    bool ReadRow(const PythonParts& python, RpaConditionRow& row);
    bool ReadComparison(const PythonParts& python, int sign, RpaConditionRow& row);
    void ReadCall(const PythonParts& python, RpaConditionRow& row) const;

    const QString source;
    QVector<RpaConditionRow> rows;
    QVector<QString> sources;
    QString reason;
};
