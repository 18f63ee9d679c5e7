// SPDX-License-Identifier: Apache-2.0

#include <WbBaseUI/WbTextSearch.h>

#include <QTextCursor>

namespace
{
constexpr int marksAtMost = 1000;
// Legible behind text in the light and in the dark scheme.
const QColor markColor(255, 193, 7, 100);
} // namespace

QTextCursor WbTextSearch::Find(const QTextCursor& from, const QString& text, QTextDocument::FindFlags flags)
{
    if (text.isEmpty())
        return {};
    const QTextDocument* document = from.document();
    const QTextCursor found = document->find(text, from, flags);
    if (!found.isNull())
        return found;
    QTextCursor edge = from;
    edge.movePosition(flags.testFlag(QTextDocument::FindBackward) ? QTextCursor::End : QTextCursor::Start);
    return document->find(text, edge, flags);
}

WbTextSearch::Marks WbTextSearch::MarksOf(QTextDocument* document, const QString& text,
                                          QTextDocument::FindFlags flags)
{
    Marks marks;
    QTextCursor found(document);
    while (!text.isEmpty()) {
        found = document->find(text, found, flags);
        if (found.isNull())
            break;
        if (marks.places.size() == marksAtMost) {
            marks.isMore = true;
            break;
        }
        QTextEdit::ExtraSelection mark;
        mark.cursor = found;
        mark.format.setBackground(markColor);
        marks.places.append(mark);
    }
    return marks;
}
