// SPDX-License-Identifier: Apache-2.0

#pragma once

class QTextCursor;
class QTextDocument;

// Edits of lines of Python; each is one undo step. A cursor stands for the lines that its selection touches.
namespace PythonLines
{
constexpr int indentWidth = 4;

// The new line starts where the old one did, deeper behind a colon, less deep behind what ends a block. The
// cursor goes there.
void Break(QTextCursor& cursor);

// Takes one level of the indentation in front of the cursor; false where there is none.
bool DeleteIndent(QTextCursor cursor);

// Without a selection, fills up with blanks to the next level.
void Indent(QTextCursor cursor);
void Outdent(const QTextCursor& cursor);
void ToggleComment(const QTextCursor& cursor);

// Changes place with the line above (-1) or below (1), the selection along with it; false at the edge.
bool Move(QTextCursor& cursor, int direction);
void Duplicate(const QTextCursor& cursor);

// The place of the bracket that pairs with the one at the position; -1 without.
int PartnerOf(const QTextDocument& document, int position);
} // namespace PythonLines
