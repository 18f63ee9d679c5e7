// SPDX-License-Identifier: Apache-2.0

#include "RichDocument_p.h"
#include "RichFormats_p.h"
#include "RichHtmlSanitizer_p.h"

#include <QTextBlock>
#include <QTextCursor>
#include <QTextTable>
#include <QUrl>

namespace
{
// The parser opens a block of its own at the start of a document and of a cell and behind a table, and leaves
// it empty when a paragraph follows: every saving and loading would add an empty line there.
void RemoveEmptyStart(const QTextBlock& block)
{
    const QTextBlock next = block.next();
    if (!block.isValid() || !next.isValid() || block.length() > 1 || block.blockFormat().topMargin() > 0)
        return;
    QTextCursor here(block);
    const QTextCursor there(next);
    const bool sameCell =
        !here.currentTable() || here.currentTable()->cellAt(here) == here.currentTable()->cellAt(there);
    if (here.currentFrame() == there.currentFrame() && sameCell)
        here.deleteChar();
}

void TidyFrame(QTextDocument& document, QTextFrame& frame)
{
    const QList<QTextFrame*> children = frame.childFrames();
    for (QTextFrame* child : children) {
        TidyFrame(document, *child);
        RemoveEmptyStart(document.findBlock(child->lastPosition() + 1));
    }
    auto* table = qobject_cast<QTextTable*>(&frame);
    for (int row = 0; table && row < table->rows(); ++row) {
        for (int column = 0; column < table->columns(); ++column) {
            const QTextTableCell cell = table->cellAt(row, column);
            if (cell.row() == row && cell.column() == column)
                RemoveEmptyStart(cell.firstCursorPosition().block());
        }
    }
}
} // namespace

RichDocument::RichDocument(QSharedPointer<RichImages> pictures, QObject* parent)
    : QTextDocument(parent), images(std::move(pictures))
{
    setDocumentMargin(16);
    setDefaultStyleSheet(
        QStringLiteral("p { margin-top: 4px; margin-bottom: 4px; }"
                       "h1 { margin-top: 12px; margin-bottom: 6px; }"
                       "h2 { margin-top: 10px; margin-bottom: 5px; }"
                       "h3 { margin-top: 8px; margin-bottom: 4px; }"
                       "li { margin-top: 2px; margin-bottom: 2px; }"
                       "table { border-collapse: collapse; margin-top: 6px; margin-bottom: 6px; }"));
}

void RichDocument::SetLook(const QFont& font, const QColor& link)
{
    setDefaultFont(font);
    static const QString marker = QStringLiteral("a {");
    QString sheet = defaultStyleSheet();
    sheet.truncate(sheet.contains(marker) ? sheet.indexOf(marker) : sheet.size());
    setDefaultStyleSheet(sheet +
                         QStringLiteral("a { color: %1; text-decoration: underline; }").arg(link.name()));
}

void RichDocument::RecolourLinks(const QColor& link)
{
    QTextCharFormat colour;
    colour.setForeground(link);
    QVector<QPair<int, int>> links;
    for (QTextBlock block = begin(); block.isValid(); block = block.next()) {
        for (auto it = block.begin(); !it.atEnd(); ++it)
            if (it.fragment().charFormat().isAnchor())
                links.append({it.fragment().position(), it.fragment().length()});
    }
    // Not an act of the author: no undo step of its own.
    const bool untouched = !isUndoAvailable() && !isRedoAvailable();
    setUndoRedoEnabled(!untouched);
    QTextCursor cursor(this);
    for (const auto& place : qAsConst(links)) {
        cursor.joinPreviousEditBlock();
        cursor.setPosition(place.first);
        cursor.setPosition(place.first + place.second, QTextCursor::KeepAnchor);
        cursor.mergeCharFormat(colour);
        cursor.endEditBlock();
    }
    setUndoRedoEnabled(true);
}

QString RichDocument::LoadHtml(const QString& html)
{
    const SanitizedHtml sanitized = SanitizeHtml(html, *images);
    QString problem = sanitized.tally.GetProblem();
    setUndoRedoEnabled(false);
    setHtml(problem.isEmpty() ? sanitized.html : QString());
    TidyFrame(*this, *rootFrame());
    RemoveEmptyStart(begin());
    if (isEmpty())
        SetMarginsOfAll();
    setUndoRedoEnabled(true);
    setModified(false);
    return problem;
}

void RichDocument::LoadWords(const QString& words)
{
    setUndoRedoEnabled(false);
    setPlainText(words);
    SetMarginsOfAll();
    setUndoRedoEnabled(true);
    setModified(false);
}

void RichDocument::SetMarginsOfAll()
{
    QTextBlockFormat paragraph;
    RichFormats::SetParagraphMargins(paragraph);
    QTextCursor all(this);
    all.select(QTextCursor::Document);
    all.setBlockFormat(paragraph);
}

QVariant RichDocument::loadResource(int type, const QUrl& name)
{
    if (type != QTextDocument::ImageResource)
        return QVariant();
    return images->Pixmap(name.toString());
}
