// SPDX-License-Identifier: Apache-2.0

#include "CodeFoldStrip_p.h"
#include "CodeFolds_p.h"

#include <QEvent>
#include <QPlainTextDocumentLayout>
#include <QPlainTextEdit>
#include <QTextCursor>

#include <algorithm>

namespace
{
// Of a line without text, -1: it belongs to what is around it.
int ColumnsOf(const QTextBlock& block)
{
    const QString text = block.text();
    int columns = 0;
    for (const QChar c : text)
        if (c == QLatin1Char('\t'))
            columns += 8 - columns % 8;
        else if (c == QLatin1Char(' '))
            ++columns;
        else
            return columns;
    return -1;
}

// Whether lines behind the block are hidden that belong to it no more.
bool HidesMore(const QTextBlock& head)
{
    const QTextBlock behind = CodeFolds::EndOf(head).next();
    return head.isVisible() && behind.isValid() && !behind.isVisible();
}

QTextBlock NextWithText(const QTextBlock& block)
{
    QTextBlock next = block.next();
    while (next.isValid() && ColumnsOf(next) < 0)
        next = next.next();
    return next;
}
} // namespace

CodeFolds::CodeFolds(QPlainTextEdit* codeEdit, QWidget* codeGutter)
    : QObject(codeEdit), edit(codeEdit), gutter(codeGutter), strip(new CodeFoldStrip(codeEdit, this))
{
    gutter->installEventFilter(this);
    connect(edit, &QPlainTextEdit::cursorPositionChanged, this, &CodeFolds::SlotCursorMoved);
    connect(edit->document(), &QTextDocument::contentsChange, this, &CodeFolds::SlotContentsChange);
    connect(edit, &QPlainTextEdit::updateRequest, strip, qOverload<>(&QWidget::update));
    Layout();
}

bool CodeFolds::IsHead(const QTextBlock& block)
{
    const int indent = block.isValid() ? ColumnsOf(block) : -1;
    if (indent < 0)
        return false;
    const QTextBlock next = NextWithText(block);
    return next.isValid() && ColumnsOf(next) > indent;
}

QTextBlock CodeFolds::EndOf(const QTextBlock& head)
{
    const int indent = ColumnsOf(head);
    QTextBlock last = head;
    for (QTextBlock next = NextWithText(head); next.isValid() && ColumnsOf(next) > indent;
         next = NextWithText(next))
        last = next;
    return last;
}

int CodeFolds::PlaceOf(const QTextBlock& head) const
{
    const auto found = std::find_if(folded.begin(), folded.end(),
                                    [&head](const QTextCursor& cursor) { return cursor.block() == head; });
    return found == folded.end() ? -1 : static_cast<int>(found - folded.begin());
}

bool CodeFolds::IsFolded(const QTextBlock& head) const
{
    return PlaceOf(head) >= 0;
}

void CodeFolds::Fold(const QTextBlock& head)
{
    if (!IsHead(head) || IsFolded(head))
        return;
    const QTextBlock last = EndOf(head);
    const int cursor = edit->textCursor().blockNumber();
    folded.append(QTextCursor(head));
    if (cursor > head.blockNumber() && cursor <= last.blockNumber())
        edit->setTextCursor(QTextCursor(head)); // else it would open it at once
    Show(head.next(), last, false);
}

void CodeFolds::Unfold(const QTextBlock& head)
{
    const int place = PlaceOf(head);
    if (place < 0)
        return;
    folded.remove(place);
    const QTextBlock last = EndOf(head);
    Show(head.next(), last, true);
    // What is folded within stays so.
    const QVector<QTextCursor> others = folded;
    for (const QTextCursor& other : others)
        if (head < other.block() && !(last < other.block()))
            Show(other.block().next(), EndOf(other.block()), false);
}

void CodeFolds::Show(const QTextBlock& first, const QTextBlock& last, bool visible)
{
    if (!first.isValid() || last < first)
        return;
    for (QTextBlock block = first; block.isValid() && !(last < block); block = block.next()) {
        block.setVisible(visible);
        block.setLineCount(visible ? qMax(1, block.layout()->lineCount()) : 0);
    }
    edit->document()->markContentsDirty(first.position(), last.position() + last.length() - first.position());
    auto* layout = qobject_cast<QPlainTextDocumentLayout*>(edit->document()->documentLayout());
    emit layout->documentSizeChanged(layout->documentSize());
    edit->viewport()->update();
    gutter->update();
    strip->update();
}

void CodeFolds::ToggleAtCursor()
{
    QTextBlock head = edit->textCursor().block();
    if (IsFolded(head)) {
        Unfold(head);
        return;
    }
    const int from = head.blockNumber();
    while (head.isValid() && !(IsHead(head) && EndOf(head).blockNumber() >= from))
        head = head.previous();
    Fold(head);
}

void CodeFolds::ToggleAll()
{
    if (!folded.isEmpty()) {
        while (!folded.isEmpty())
            Unfold(folded.last().block());
        return;
    }
    for (QTextBlock block = edit->document()->begin(); block.isValid(); block = block.next())
        if (ColumnsOf(block) == 0)
            Fold(block);
}

void CodeFolds::SlotCursorMoved()
{
    const QTextBlock here = edit->textCursor().block();
    if (here.isVisible())
        return;
    const QVector<QTextCursor> all = folded;
    for (const QTextCursor& cursor : all) {
        const QTextBlock head = cursor.block();
        if (head < here && !(EndOf(head) < here))
            Unfold(head);
    }
    if (!here.isVisible())
        Show(here, here, true);
}

// A block that gained or lost lines is folded no more: it might hide what nobody folded.
void CodeFolds::SlotContentsChange(int position, int, int added)
{
    if (folded.isEmpty())
        return;
    const QTextDocument& document = *edit->document();
    const QTextBlock first = document.findBlock(position);
    const QTextBlock last = document.findBlock(qMin(position + added, document.characterCount() - 1));
    const QVector<QTextCursor> all = folded;
    bool opens = false;
    for (const QTextCursor& cursor : all) {
        const QTextBlock head = cursor.block();
        opens = opens || !IsHead(head) || HidesMore(head) ||
                !(last < head || last == head || EndOf(head) < first);
    }
    if (!opens)
        return;
    folded.clear();
    Show(document.begin(), document.lastBlock(), true);
}

void CodeFolds::Layout()
{
    strip->setGeometry(gutter->geometry().right() + 1 - CodeFoldStrip::width, gutter->y(),
                       CodeFoldStrip::width, gutter->height());
    strip->raise();
}

bool CodeFolds::eventFilter(QObject*, QEvent* event)
{
    if (event->type() == QEvent::Resize || event->type() == QEvent::Move)
        Layout();
    return false;
}
