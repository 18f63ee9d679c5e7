// SPDX-License-Identifier: Apache-2.0

#include "JsonNumber_p.h"

#include <QByteArray>

#include <charconv>
#include <cmath>

namespace
{
// More digits than any number within the range has.
constexpr int manyDigits = 17;

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

const char* SkipDigits(const char* at, const char* end)
{
    while (at < end && IsDigit(*at))
        ++at;
    return at;
}

// Null when something is missing.
const char* SkipFraction(const char* at, const char* end)
{
    if (at == end || *at != '.')
        return at;
    const char* digits = at + 1;
    const char* behind = SkipDigits(digits, end);
    return behind == digits ? nullptr : behind;
}

const char* SkipExponent(const char* at, const char* end)
{
    if (at == end || (*at != 'e' && *at != 'E'))
        return at;
    const char* digits = at + 1;
    if (digits < end && (*digits == '+' || *digits == '-'))
        ++digits;
    const char* behind = SkipDigits(digits, end);
    return behind == digits ? nullptr : behind;
}

void ReadWhole(JsonNumber& number, const char* digits, bool negative)
{
    if (number.end - digits > manyDigits)
        return;
    qint64 whole = 0;
    for (const char* at = digits; at < number.end; ++at)
        whole = whole * 10 + (*at - '0');
    number.inRange = whole <= largestJsonInteger;
    number.whole = negative ? -whole : whole;
    number.value = negative ? -static_cast<double>(whole) : static_cast<double>(whole);
}

void ReadReal(JsonNumber& number, const char* text)
{
    const auto result = std::from_chars(text, number.end, number.value);
    // from_chars does not tell too small from too large.
    if (result.ec == std::errc::result_out_of_range)
        number.value = QByteArray(text, static_cast<int>(number.end - text)).toDouble();
    number.inRange = std::abs(number.value) <= static_cast<double>(largestJsonInteger);
}
} // namespace

JsonNumber JsonNumber::Scan(const char* text, const char* textEnd)
{
    JsonNumber number;
    const bool negative = text < textEnd && *text == '-';
    const char* digits = negative ? text + 1 : text;
    if (digits == textEnd || !IsDigit(*digits))
        return number;

    const char* wholeEnd = *digits == '0' ? digits + 1 : SkipDigits(digits, textEnd);
    const char* fractionEnd = SkipFraction(wholeEnd, textEnd);
    number.end = fractionEnd ? SkipExponent(fractionEnd, textEnd) : nullptr;
    if (!number.end)
        return number;

    number.isWhole = number.end == wholeEnd;
    if (number.isWhole)
        ReadWhole(number, digits, negative);
    else
        ReadReal(number, text);
    return number;
}
