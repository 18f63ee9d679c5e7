// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QtGlobal>

// What a text may ask of the layout. Each limit was measured to keep the work of its worst case far below two
// seconds on a slow machine; the texts that people write stay far below all of them.
namespace RichLimits
{
constexpr int sourceSize = 48 * 1024 * 1024; // with the pictures in it, in characters
constexpr int textSize = 2 * 1000 * 1000;    // without
constexpr int tags = 200 * 1000;
constexpr int depth = 48;     // of any tag in another; what is deeper loses its tag and keeps its words
constexpr int tableDepth = 3; // likewise
constexpr int span = 64;      // of one cell over columns or rows; a wider one spans nothing
constexpr int columns = 100;
constexpr int cells = 2000; // of all tables, covered ones included; nested ones count for several
constexpr int listItems = 2000;
constexpr int paragraphs = 40 * 1000;
constexpr int paragraphSize = 20 * 1000;
constexpr int paragraphTags = 4000;
// A paragraph costs the layout the square of its length and of its tags, a list the square of its items.
constexpr qint64 layoutWork = 8LL * 1000 * 1000 * 1000;
constexpr qint64 workPerTagSquared = 100;
constexpr qint64 workPerItemSquared = 300;
} // namespace RichLimits
