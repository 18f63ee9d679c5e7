// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaProcessData/RpaValue.h>

#include <QStringList>

// How a value is typed and shown where one field takes texts, numbers and variables alike: digits are a
// number, a variable's name is the variable, all else is text. A text that would be taken for something else
// stands in quotes.
namespace ValueText
{
QVector<RpaValuePart> Shown(const RpaValue& value, const QStringList& variables);
RpaValue Meant(const QVector<RpaValuePart>& typed, const QStringList& variables);

// What the piece for some Python says.
QString Label(const QString& python);
// A value in one line, for where nothing can be painted.
QString Line(const RpaValue& value, const QStringList& variables);
} // namespace ValueText
