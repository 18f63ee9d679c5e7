// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "PythonTokens_p.h"

#include <QString>

// A stretch of the tokens of an expression, with what stands at its own level: outside of all brackets.
class PythonParts
{
public:
    PythonParts() = default;
    explicit PythonParts(const QString& python);

    // Empty for an expression whose brackets and texts are closed.
    bool IsBroken() const { return broken; }

    int Count() const { return tokens.size(); }
    bool IsEmpty() const { return tokens.isEmpty(); }
    const PythonToken& At(int index) const { return tokens.at(index); }
    bool IsOutside(int index) const { return depths.at(index) == 0; }

    // The first token from there on at the own level that is this word or sign; -1 when there is none.
    int Find(const char* word, int from = 0) const;
    bool Has(const char* word) const { return Find(word) >= 0; }

    PythonParts Mid(int first, int count) const;
    QVector<PythonParts> SplitAt(const char* sign) const;
    // Whether one pair of these brackets holds all of it.
    bool IsWithin(const char* open, const char* close) const;
    PythonParts Inside() const { return Mid(1, Count() - 2); }
    // As it stands in the source, without blanks around.
    QString Text() const;

private:
    void ReadDepths();

    QString source;
    QVector<PythonToken> tokens;
    QVector<int> depths;
    bool broken = false;
};
