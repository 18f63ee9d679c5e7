// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbFoundation/WbFoundationExport.h>

#include <QStringList>

// Finds what people type in a search field: the very words, or Chinese by its readings, whole ("shaixuan"),
// by initials ("sx"), mixed ("筛xuan") and while the last syllable is still being typed ("shaix"). A
// character with several readings is found by each. Upper and lower case count alike. Any thread.
namespace SearchText
{
// Where the word begins in the text; -1 when it is not there, 0 for an empty word.
WBFOUNDATION_EXPORT int Find(const QString& text, const QString& word);

// Whether each of the words, which are separated by blanks, is found in one of the texts; true without words.
WBFOUNDATION_EXPORT bool HasAll(const QStringList& texts, const QString& words);
} // namespace SearchText
