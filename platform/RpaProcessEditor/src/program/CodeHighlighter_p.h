// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <memory>

class QString;
class QSyntaxHighlighter;
class QTextDocument;

// A highlighter for Python in the theme's colours. Two implementations exist, one of which the build chooses:
// CodeHighlighterKde.cpp where KSyntaxHighlighting is found, else CodeHighlighterOwn.cpp.
std::unique_ptr<QSyntaxHighlighter> MakePythonHighlighter(QTextDocument& document);

// Name and version of the library behind it; empty for the own one.
QString HighlighterName();
