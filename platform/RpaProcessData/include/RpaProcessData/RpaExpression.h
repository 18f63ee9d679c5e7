#pragma once

#include <RpaProcessData/RpaCommandCatalogue.h>

#include <QString>
#include <QStringList>

// The meaning of an argument's text. A text that begins with "=" is a Python expression (as in a
// spreadsheet); any other text is literal; a literal that begins with "=" or "'" is written with a leading
// "'". Arguments of the type Expression are always Python; those of the types Variable, Choice, Process and
// Element never are.
namespace RpaExpression
{
// Whether the text is Python.
RPAPROCESSDATA_EXPORT bool IsPython(RpaArgumentType type, const QString& text);

// Python source that yields the argument's value; for a Variable the bare name. "None" for an empty text of
// any type but Text, "" for an empty Text.
RPAPROCESSDATA_EXPORT QString ToPython(RpaArgumentType type, const QString& text);

// A Python string literal of the text, printable characters as they are.
RPAPROCESSDATA_EXPORT QString ToPythonLiteral(const QString& text);

// Names that a Python expression reads, each once: no attributes, keywords, named arguments, names bound by
// its own comprehensions and lambdas, nor names inside string literals (but those inside f-string fields).
RPAPROCESSDATA_EXPORT QStringList GetVariables(const QString& python);

// Whether the text may name a variable: a Python identifier (Chinese letters included) that is no keyword.
RPAPROCESSDATA_EXPORT bool IsVariableName(const QString& text);
} // namespace RpaExpression
