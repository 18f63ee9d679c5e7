// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

struct RichWords
{
    QString text;
    bool complete = true; // false: only the beginning
};

// The words of a text that cannot be shown as it is, a paragraph a line, in a measure that is always shown at
// once. Pictures are named where they stand.
RichWords WordsOf(const QString& html);
RichWords WordsOfPlainText(const QString& text);
