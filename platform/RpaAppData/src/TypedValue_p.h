// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QVariant>
#include <QVector>

// Conversions of cell and parameter values, and their form in JSON: numbers and switches as such, dates as
// "2024-02-29", moments as "2024-02-29T08:30:00" of local time, empty as null.
namespace TypedValue
{
// Each turns the value into the type; false, with the value left alone, when it does not fit.
bool ToNumber(QVariant& value);
bool ToDate(QVariant& value);
// To the second; a day alone is its start.
bool ToDateTime(QVariant& value);
// A list of texts, from one or from a text alone.
bool ToTexts(QVariant& value);
bool ToSwitch(QVariant& value);
bool ToText(QVariant& value);

// Whether both are of one type and equal to the last digit: QVariant takes other types and numbers nearby for
// the same.
bool IsSame(const QVariant& one, const QVariant& other);
// The same of rows, at once where they are shared.
bool IsSame(const QVector<QVector<QVariant>>& one, const QVector<QVector<QVariant>>& other);

// A text that could not be read back from JSON (ContentLimits.h).
bool IsTooLong(const QVariant& value);

// A date or a moment as its JSON text, everything else as it is.
QVariant ToJsonValue(const QVariant& value);
} // namespace TypedValue
