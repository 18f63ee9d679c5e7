// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>
#include <QStringList>

class QTextDocument;

// Names and words of Python texts, where no helper is needed or none is there.
namespace PythonWords
{
const QStringList& Keywords();

bool IsNamePart(QChar c);

// Where the name around the offset begins and ends; equal without one.
int BeginOf(const QTextDocument& document, int offset);
int EndOf(const QTextDocument& document, int offset);

// Why the text is no name for a variable, in the author's words; empty when it is one.
QString ProblemOf(const QString& name);

// The names in the lines around the offset, each once, in alphabetical order, without the one at the offset itself.
QStringList Near(const QTextDocument& document, int offset);
} // namespace PythonWords
