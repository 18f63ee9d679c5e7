#pragma once

#include <memory>

class QSyntaxHighlighter;
class QTextDocument;

// A highlighter for Python in the theme's colours. Two implementations exist, one of which the build chooses:
// CodeHighlighterKde.cpp where KSyntaxHighlighting is found, else CodeHighlighterOwn.cpp.
std::unique_ptr<QSyntaxHighlighter> MakePythonHighlighter(QTextDocument& document);
