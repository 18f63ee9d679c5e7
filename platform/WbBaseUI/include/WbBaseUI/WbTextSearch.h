// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbBaseUI/WbBaseUIExport.h>

#include <QTextDocument>
#include <QTextEdit>

// Searching a text document, alike for plain and rich text.
namespace WbTextSearch
{
// The places of a text as a text edit marks them.
struct Marks
{
    QList<QTextEdit::ExtraSelection> places;
    bool isMore = false; // than are worth marking
};

// The next place of the text seen from the cursor, or around the end of the document; a null cursor when
// there is none. FindBackward goes the other way.
WBBASEUI_EXPORT QTextCursor Find(const QTextCursor& from, const QString& text,
                                 QTextDocument::FindFlags flags);

// The places of the text, for setExtraSelections(); none of an empty text.
WBBASEUI_EXPORT Marks MarksOf(QTextDocument* document, const QString& text, QTextDocument::FindFlags flags);
} // namespace WbTextSearch
