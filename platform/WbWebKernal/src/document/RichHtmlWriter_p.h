// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

class QTextDocument;
class RichImages;

// Writes a document in the format the text is kept in: a small subset of HTML that any program shows.
//   p, h1–h3 (text-align, margin-left in steps of 40px), ul, ol, li, table, tr, td (colspan, rowspan),
//   b, i, u, s, span (color, background-color), a (http, https, mailto), img (data URI, width, height), br
// Whatever else the document holds is left out, so that nothing foreign survives. The HTML of a block is kept
// with the block until it changes: an edit in a text of a megabyte then costs the joining only.
class RichHtmlWriter
{
public:
    // Empty for a document without content.
    static QString Write(const QTextDocument& document, const RichImages& images);

    // Forgets the kept HTML of the blocks that a change touched (arguments of QTextDocument::contentsChange).
    static void Forget(QTextDocument& document, int position, int charsAdded);
};
