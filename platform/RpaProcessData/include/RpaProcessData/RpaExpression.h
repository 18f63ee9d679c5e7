// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaProcessData/RpaCommandCatalogue.h>

#include <QString>
#include <QStringList>

// The meaning of an argument's text, by the argument's type:
//   Text, File, Folder, Parameter   "=" and a Python expression (as in a spreadsheet), else literal text; a
//                                   literal that begins with "=" is written "'=…", one that begins with "'="
//                                   is written "''=…"
//   Number, Switch                  a number or "true" / "false", else a Python expression, with or without "="
//   Expression                      a Python expression
//   Choice, Process, Element        literal
//   Variable                        a variable's name
namespace RpaExpression
{
// Whether the text is Python.
RPAPROCESSDATA_EXPORT bool IsPython(RpaArgumentType type, const QString& text);

// Python source that yields the argument's value; for a Variable the bare name. An empty text gives None for
// Number, Switch and Expression, else the empty text.
RPAPROCESSDATA_EXPORT QString ToPython(RpaArgumentType type, const QString& text);

// A Python string literal of the text, printable characters as they are.
RPAPROCESSDATA_EXPORT QString ToPythonLiteral(const QString& text);

// Whether a Python expression is complete as far as can be told without Python: brackets and quotes closed,
// no comment, no assignment, no operator at its end.
RPAPROCESSDATA_EXPORT bool IsWellFormed(const QString& python);

// Names that a Python expression reads, each once, in their order: no attributes, keywords, built-in
// functions, named arguments, names bound by its own comprehensions and lambdas, nor names inside string
// literals (but those inside the fields of f-strings).
RPAPROCESSDATA_EXPORT QStringList GetVariables(const QString& python);

// Whether the text may name a variable: a Python identifier (Chinese letters included) that is no keyword.
RPAPROCESSDATA_EXPORT bool IsVariableName(const QString& text);
} // namespace RpaExpression
