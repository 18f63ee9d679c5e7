// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QColor>
#include <QTextCursor>
#include <QTextListFormat>

class QTextBlockFormat;

// The acts of formatting on a cursor or its selection. Each is one undo step.
namespace RichFormats
{
constexpr int indentStep = 40; // pixels
constexpr int maximumIndent = 6;

// 0 to maximumIndent.
int IndentLevel(const QTextBlockFormat& format);

// Margins of an ordinary paragraph.
void SetParagraphMargins(QTextBlockFormat& format);

// 0 ordinary paragraph, 1 to 3 headings.
void SetHeading(QTextCursor cursor, int level);
int Heading(const QTextCursor& cursor);

// Takes the style away where all selected paragraphs have it, else gives it to all.
void ToggleList(QTextCursor cursor, QTextListFormat::Style style);
bool IsInList(const QTextCursor& cursor, QTextListFormat::Style style);

// Moves paragraphs or list items by steps; the first level of a list moves out of the list.
void ChangeIndent(QTextCursor cursor, int steps);

void SetAlignment(QTextCursor cursor, Qt::Alignment alignment);

// The colour that can be read on a background, whatever the theme: highlighted text carries it.
QColor TextOn(const QColor& background);

// Plain text without any inline format.
void ClearInline(QTextCursor cursor);
} // namespace RichFormats
