// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QtGlobal>

// The largest whole number up to which every JSON reader agrees (2^53).
constexpr qint64 largestJsonInteger = Q_INT64_C(1) << 53;

// A number of a JSON text, checked and measured in one go.
struct JsonNumber
{
    const char* end = nullptr; // behind its last character; null when there is no number in JSON's form
    bool isWhole = false;      // written without fraction and exponent
    bool inRange = false;      // within ±2^53
    qint64 whole = 0;          // when isWhole and inRange
    double value = 0;          // when inRange

    static JsonNumber Scan(const char* text, const char* textEnd);
};
