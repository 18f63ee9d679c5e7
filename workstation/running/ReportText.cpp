// SPDX-License-Identifier: Apache-2.0

#include "ReportText.h"

#include <QTextBlock>
#include <QTextDocument>

void ReportText::Fill(QTextDocument* document, const ReportParts& texts)
{
    QTextCursor end(document);
    for (const auto& [title, text] : texts) {
        Part part{QTextCursor(document), QTextCursor(document), QString()};
        part.first.setPosition(end.position());
        part.first.setKeepPositionOnInsert(true);
        end.insertText(text);
        const int last = end.position();
        // What stands between two parts belongs to none, so that their ends never meet.
        end.insertText(QStringLiteral("\n"));
        part.last.setPosition(last);
        parts.append(part);
    }
}

void ReportText::SetIncluded(int number, bool included)
{
    Part& part = parts[number];
    QTextCursor all(part.first.block());
    all.setPosition(part.first.position());
    all.setPosition(part.last.position(), QTextCursor::KeepAnchor);
    if (included == all.hasSelection())
        return;
    if (!included) {
        part.removed = all.selectedText();
        all.removeSelectedText();
    } else {
        all.insertText(part.removed);
        part.last.setPosition(all.position());
    }
}
