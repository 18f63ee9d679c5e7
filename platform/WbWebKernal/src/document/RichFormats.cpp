// SPDX-License-Identifier: Apache-2.0

#include "RichFormats_p.h"

#include <QTextBlock>
#include <QTextDocument>
#include <QTextList>

#include <functional>

namespace
{
class EditBlock
{
public:
    explicit EditBlock(QTextCursor& edited) : cursor(edited) { cursor.beginEditBlock(); }
    ~EditBlock() { cursor.endEditBlock(); }
    Q_DISABLE_COPY(EditBlock)

private:
    QTextCursor& cursor;
};

void ForEachBlock(const QTextCursor& cursor, const std::function<void(QTextBlock)>& act)
{
    const QTextDocument* document = cursor.document();
    const int last = document->findBlock(cursor.selectionEnd()).blockNumber();
    QTextBlock block = document->findBlock(cursor.selectionStart());
    for (; block.isValid() && block.blockNumber() <= last; block = block.next())
        act(block);
}

struct Margins
{
    qreal top;
    qreal bottom;
};

// The same as the document's style sheet gives on loading.
Margins MarginsOf(int heading)
{
    static constexpr Margins margins[] = {{4, 4}, {12, 6}, {10, 5}, {8, 4}};
    return margins[heading];
}

void SetItemMargins(QTextBlockFormat& format)
{
    format.setTopMargin(2);
    format.setBottomMargin(2);
    format.setLeftMargin(0);
    format.setIndent(0);
}

void SetBlockHeading(QTextCursor cursor, const QTextBlock& block, int level)
{
    cursor.setPosition(block.position());
    cursor.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
    QTextBlockFormat format = block.blockFormat();
    if (level > 0 && block.textList())
        block.textList()->remove(block);
    format = block.blockFormat();
    format.setHeadingLevel(level);
    format.setTopMargin(MarginsOf(level).top);
    format.setBottomMargin(MarginsOf(level).bottom);
    cursor.setBlockFormat(format);
    QTextCharFormat characters;
    characters.setFontWeight(level > 0 ? QFont::Bold : QFont::Normal);
    characters.setProperty(QTextFormat::FontSizeAdjustment, level > 0 ? 4 - level : 0);
    cursor.mergeCharFormat(characters);
    cursor.mergeBlockCharFormat(characters);
}

void LeaveList(const QTextBlock& block)
{
    if (QTextList* list = block.textList())
        list->remove(block);
    QTextCursor cursor(block);
    QTextBlockFormat format = block.blockFormat();
    format.setIndent(0);
    format.setTopMargin(MarginsOf(0).top);
    format.setBottomMargin(MarginsOf(0).bottom);
    cursor.setBlockFormat(format);
}

// A neighbour of the same style and depth takes the item in, so that numbers run on.
QTextList* NeighbourList(const QTextBlock& block, QTextListFormat::Style style, int depth)
{
    for (const QTextBlock& other : {block.previous(), block.next()}) {
        QTextList* list = other.textList();
        if (list && list->format().style() == style && list->format().indent() == depth)
            return list;
    }
    return nullptr;
}

void EnterList(const QTextBlock& block, QTextListFormat::Style style, int depth)
{
    QTextCursor cursor(block);
    QTextBlockFormat format = block.blockFormat();
    SetItemMargins(format);
    cursor.setBlockFormat(format);
    QTextList* neighbour = NeighbourList(block, style, depth);
    if (neighbour && neighbour != block.textList()) {
        neighbour->add(block);
        return;
    }
    QTextListFormat listFormat;
    listFormat.setStyle(style);
    listFormat.setIndent(depth);
    cursor.createList(listFormat);
}

void IndentItem(const QTextBlock& block, int steps)
{
    const QTextListFormat format = block.textList()->format();
    const int depth = format.indent() + steps;
    if (depth < 1)
        LeaveList(block);
    else if (depth <= RichFormats::maximumIndent)
        EnterList(block, format.style(), depth);
}

void IndentParagraph(const QTextBlock& block, int steps)
{
    QTextBlockFormat format = block.blockFormat();
    const int level = qBound(0, RichFormats::IndentLevel(format) + steps, RichFormats::maximumIndent);
    format.setLeftMargin(level * RichFormats::indentStep);
    format.setIndent(0);
    QTextCursor(block).setBlockFormat(format);
}
} // namespace

int RichFormats::IndentLevel(const QTextBlockFormat& format)
{
    return qBound(0, format.indent() + qRound(format.leftMargin() / indentStep), maximumIndent);
}

void RichFormats::SetParagraphMargins(QTextBlockFormat& format)
{
    format.setTopMargin(MarginsOf(0).top);
    format.setBottomMargin(MarginsOf(0).bottom);
}

void RichFormats::SetHeading(QTextCursor cursor, int level)
{
    const EditBlock step(cursor);
    ForEachBlock(cursor, [&cursor, level](const QTextBlock& block) {
        SetBlockHeading(QTextCursor(cursor.document()), block, level);
    });
}

int RichFormats::Heading(const QTextCursor& cursor)
{
    return qBound(0, cursor.blockFormat().headingLevel(), 3);
}

void RichFormats::ToggleList(QTextCursor cursor, QTextListFormat::Style style)
{
    const bool all = IsInList(cursor, style);
    const EditBlock step(cursor);
    ForEachBlock(cursor, [all, style](const QTextBlock& block) {
        if (all) {
            LeaveList(block);
            return;
        }
        if (block.blockFormat().headingLevel() > 0)
            SetBlockHeading(QTextCursor(block), block, 0);
        const QTextList* list = block.textList();
        EnterList(block, style, list ? list->format().indent() : 1);
    });
}

bool RichFormats::IsInList(const QTextCursor& cursor, QTextListFormat::Style style)
{
    bool all = true;
    ForEachBlock(cursor, [&all, style](const QTextBlock& block) {
        const QTextList* list = block.textList();
        const bool ordered = list && list->format().style() <= QTextListFormat::ListDecimal;
        all = all && list && ordered == (style <= QTextListFormat::ListDecimal);
    });
    return all;
}

void RichFormats::ChangeIndent(QTextCursor cursor, int steps)
{
    const EditBlock step(cursor);
    ForEachBlock(cursor, [steps](const QTextBlock& block) {
        if (block.textList())
            IndentItem(block, steps);
        else
            IndentParagraph(block, steps);
    });
}

void RichFormats::SetAlignment(QTextCursor cursor, Qt::Alignment alignment)
{
    QTextBlockFormat format;
    format.setAlignment(alignment);
    cursor.mergeBlockFormat(format);
}

QColor RichFormats::TextOn(const QColor& background)
{
    return qGray(background.rgb()) > 128 ? QColor(0x1f, 0x23, 0x29) : QColor(Qt::white);
}

void RichFormats::ClearInline(QTextCursor cursor)
{
    const EditBlock step(cursor);
    const int start = cursor.selectionStart();
    const int end = cursor.selectionEnd();
    ForEachBlock(cursor, [&cursor, start, end](const QTextBlock& block) {
        QTextCursor part(cursor.document());
        part.setPosition(qMax(start, block.position()));
        part.setPosition(qMin(end, block.position() + block.length() - 1), QTextCursor::KeepAnchor);
        QTextCharFormat format;
        const int level = block.blockFormat().headingLevel();
        if (level > 0) {
            format.setFontWeight(QFont::Bold);
            format.setProperty(QTextFormat::FontSizeAdjustment, 4 - qMin(level, 3));
        }
        // Pictures are characters too and live in their format.
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextFragment fragment = it.fragment();
            if (fragment.charFormat().isImageFormat())
                return;
        }
        part.setCharFormat(format);
    });
}
