// SPDX-License-Identifier: Apache-2.0

#include "RichFormats_p.h"
#include "RichHtmlSanitizer_p.h"
#include "RichHtmlWriter_p.h"
#include "RichImages_p.h"

#include <QTextBlock>
#include <QTextDocument>
#include <QTextFrame>
#include <QTextList>
#include <QTextTable>
#include <QVector>

namespace
{
class KeptHtml : public QTextBlockUserData
{
public:
    explicit KeptHtml(const QString& text) : html(text) {}

    const QString html;
};

void AppendEscaped(QString& out, const QString& text, bool& spaceBefore)
{
    for (const QChar c : text) {
        const bool space = c == QLatin1Char(' ');
        switch (c.unicode()) {
        case '<':
            out += QLatin1String("&lt;");
            break;
        case '>':
            out += QLatin1String("&gt;");
            break;
        case '&':
            out += QLatin1String("&amp;");
            break;
        case '"':
            out += QLatin1String("&quot;");
            break;
        case '\t':
            out += QLatin1String("&nbsp;&nbsp;&nbsp;&nbsp;");
            break;
        case QChar::LineSeparator:
            out += QLatin1String("<br>");
            break;
        case QChar::Nbsp:
            out += QLatin1String("&nbsp;");
            break;
        case QChar::ObjectReplacementCharacter:
            break;
        // Readers join runs of spaces and drop those at the edges of a line.
        case ' ':
            out += spaceBefore ? QLatin1String("&nbsp;") : QLatin1String(" ");
            break;
        default:
            if (c.unicode() >= 0x20)
                out += c;
        }
        spaceBefore = space || c == QChar(QChar::LineSeparator);
    }
}

QString ColourStyle(const QTextCharFormat& format)
{
    QString style;
    const bool marked = format.background().style() == Qt::SolidPattern;
    QColor text;
    if (!format.isAnchor() && format.foreground().style() == Qt::SolidPattern)
        text = format.foreground().color();
    else if (marked && !format.isAnchor())
        text = RichFormats::TextOn(format.background().color()); // the theme's own may vanish on it
    if (text.isValid())
        style = QLatin1String("color:") + text.name();
    if (marked)
        style += (style.isEmpty() ? QLatin1String() : QLatin1String(";")) +
                 QLatin1String("background-color:") + format.background().color().name();
    return style;
}

QString PictureHtml(const QTextImageFormat& format, const RichImages& images)
{
    if (!images.Contains(format.name()))
        return {};
    QString html = QLatin1String("<img src=\"") + images.DataUri(format.name()) + QLatin1Char('"');
    const int width = qRound(format.width());
    const int height = qRound(format.height());
    if (width > 0 && width <= 4096 && height > 0 && height <= 4096)
        html += QStringLiteral(" width=\"%1\" height=\"%2\"").arg(width).arg(height);
    return html + QLatin1Char('>');
}

void AppendFragment(QString& out, const QTextFragment& fragment, bool heading, const RichImages& images,
                    bool& spaceBefore)
{
    const QTextCharFormat format = fragment.charFormat();
    if (format.isImageFormat()) {
        // Equal neighbouring pictures share one fragment, one character each.
        for (int i = 0; i < fragment.length(); ++i)
            out += PictureHtml(format.toImageFormat(), images);
        spaceBefore = false;
        return;
    }
    const bool link = format.isAnchor() && IsAllowedLink(format.anchorHref());
    QString close;
    const auto open = [&out, &close](const QString& tag, const QString& attributes) {
        out += QLatin1Char('<') + tag + attributes + QLatin1Char('>');
        close.prepend(QLatin1String("</") + tag + QLatin1Char('>'));
    };
    if (link)
        open(QStringLiteral("a"), QStringLiteral(" href=\"%1\"").arg(format.anchorHref().toHtmlEscaped()));
    if (const QString style = ColourStyle(format); !style.isEmpty())
        open(QStringLiteral("span"), QStringLiteral(" style=\"%1\"").arg(style));
    if (!heading && format.fontWeight() > QFont::Medium)
        open(QStringLiteral("b"), {});
    if (format.fontItalic())
        open(QStringLiteral("i"), {});
    // Links are underlined by their reader; what only looked like a link is text.
    if (!format.isAnchor() && format.fontUnderline())
        open(QStringLiteral("u"), {});
    if (format.fontStrikeOut())
        open(QStringLiteral("s"), {});
    AppendEscaped(out, fragment.text(), spaceBefore);
    out += close;
}

QString InnerHtml(const QTextBlock& block, const RichImages& images)
{
    QString html;
    const bool heading = block.blockFormat().headingLevel() > 0;
    bool spaceBefore = true;
    for (auto it = block.begin(); !it.atEnd(); ++it)
        AppendFragment(html, it.fragment(), heading, images, spaceBefore);
    if (html.endsWith(QLatin1Char(' ')))
        html = html.left(html.size() - 1) + QLatin1String("&nbsp;");
    return html;
}

QString ParagraphStyle(const QTextBlockFormat& format, bool empty)
{
    QString style;
    const Qt::Alignment alignment = format.alignment() & Qt::AlignHorizontal_Mask;
    if (alignment == Qt::AlignHCenter)
        style += QLatin1String("text-align:center;");
    else if (alignment == Qt::AlignRight)
        style += QLatin1String("text-align:right;");
    if (const int level = RichFormats::IndentLevel(format); level > 0)
        style += QStringLiteral("margin-left:%1px;").arg(level * RichFormats::indentStep);
    if (empty)
        style += QLatin1String("-qt-paragraph-type:empty;");
    style.chop(style.isEmpty() ? 0 : 1);
    return style.isEmpty() ? style : QStringLiteral(" style=\"%1\"").arg(style);
}

QString BlockHtml(QTextBlock block, const RichImages& images)
{
    if (const auto* kept = static_cast<const KeptHtml*>(block.userData()))
        return kept->html;
    QString html = InnerHtml(block, images);
    if (!block.textList()) {
        const int level = qBound(0, block.blockFormat().headingLevel(), 3);
        const QString tag = level > 0 ? QStringLiteral("h%1").arg(level) : QStringLiteral("p");
        const bool empty = html.isEmpty();
        html = QLatin1Char('<') + tag + ParagraphStyle(block.blockFormat(), empty) + QLatin1Char('>') +
               (empty ? QStringLiteral("<br>") : html) + QLatin1String("</") + tag + QLatin1String(">\n");
    }
    block.setUserData(new KeptHtml(html)); // the block owns it
    return html;
}

bool IsOrdered(const QTextList& list)
{
    return list.format().style() <= QTextListFormat::ListDecimal;
}

class FrameWriter
{
public:
    FrameWriter(const RichImages& pictures, QString& target) : images(pictures), out(target) {}

    void WriteFrame(QTextFrame::iterator it, int depth)
    {
        for (const QTextFrame::iterator begin = it; !it.atEnd(); ++it) {
            if (QTextFrame* child = it.currentFrame()) {
                CloseLists(0);
                WriteChild(child, depth + 1);
                continue;
            }
            const QTextBlock block = it.currentBlock();
            if (block.isValid() && !IsFiller(it, begin, block))
                WriteBlock(block);
        }
        CloseLists(0);
    }

private:
    struct Level
    {
        const QTextList* list;
        bool ordered;
    };

    // The layout needs a block before and behind every table; those that the author left empty are not
    // content.
    static bool IsFiller(const QTextFrame::iterator& it, const QTextFrame::iterator& begin,
                         const QTextBlock& block)
    {
        if (block.length() > 1 || block.textList())
            return false;
        QTextFrame::iterator next = it;
        ++next;
        if (next.atEnd() || next.currentFrame()) {
            if (it == begin)
                return !next.atEnd();
            QTextFrame::iterator before = it;
            --before;
            return before.currentFrame() != nullptr;
        }
        return false;
    }

    void WriteChild(QTextFrame* frame, int depth)
    {
        auto* table = qobject_cast<QTextTable*>(frame);
        if (table && depth <= 3) {
            WriteTable(*table, depth);
            return;
        }
        // Deeper nesting is nobody's layout: its paragraphs stay, its cells do not.
        QTextBlock block = frame->document()->findBlock(frame->firstPosition());
        for (; block.isValid() && block.position() <= frame->lastPosition(); block = block.next())
            WriteBlock(block);
        CloseLists(0);
    }

    void WriteTable(const QTextTable& table, int depth)
    {
        out += QLatin1String("<table border=\"1\" cellspacing=\"0\" cellpadding=\"6\" width=\"100%\">\n");
        for (int row = 0; row < table.rows(); ++row) {
            out += QLatin1String("<tr>");
            for (int column = 0; column < table.columns(); ++column)
                WriteCell(table.cellAt(row, column), row, column, depth);
            out += QLatin1String("</tr>\n");
        }
        out += QLatin1String("</table>\n");
    }

    void WriteCell(const QTextTableCell& cell, int row, int column, int depth)
    {
        if (cell.row() != row || cell.column() != column)
            return; // covered by a cell that spans
        out += QLatin1String("<td");
        if (cell.columnSpan() > 1)
            out += QStringLiteral(" colspan=\"%1\"").arg(cell.columnSpan());
        if (cell.rowSpan() > 1)
            out += QStringLiteral(" rowspan=\"%1\"").arg(cell.rowSpan());
        out += QLatin1Char('>');
        FrameWriter(images, out).WriteFrame(cell.begin(), depth);
        out += QLatin1String("</td>");
    }

    void WriteBlock(const QTextBlock& block)
    {
        if (QTextList* list = block.textList())
            OpenItem(*list);
        else
            CloseLists(0);
        out += BlockHtml(block, images);
    }

    void OpenItem(const QTextList& list)
    {
        const int depth = qBound(1, list.format().indent(), RichFormats::maximumIndent);
        CloseLists(depth);
        if (levels.size() == depth && levels.last().list != &list)
            CloseLists(depth - 1);
        if (levels.size() == depth) {
            out += QLatin1String("</li>\n<li>");
            return;
        }
        while (levels.size() < depth) {
            levels.append({&list, IsOrdered(list)});
            out += levels.last().ordered ? QLatin1String("<ol>") : QLatin1String("<ul>");
        }
        out += QLatin1String("<li>");
    }

    void CloseLists(int depth)
    {
        while (levels.size() > depth) {
            out += levels.last().ordered ? QLatin1String("</li></ol>") : QLatin1String("</li></ul>");
            levels.removeLast();
            if (levels.isEmpty())
                out += QLatin1Char('\n');
        }
    }

    const RichImages& images;
    QString& out;
    QVector<Level> levels;
};
} // namespace

QString RichHtmlWriter::Write(const QTextDocument& document, const RichImages& images)
{
    if (document.isEmpty())
        return {};
    QString out;
    FrameWriter(images, out).WriteFrame(document.rootFrame()->begin(), 0);
    out.chop(out.endsWith(QLatin1Char('\n')) ? 1 : 0);
    return out;
}

void RichHtmlWriter::Forget(QTextDocument& document, int position, int charsAdded)
{
    const QTextBlock last = document.findBlock(qMin(position + charsAdded, document.characterCount() - 1));
    for (QTextBlock block = document.findBlock(position); block.isValid(); block = block.next()) {
        block.setUserData(nullptr);
        if (block == last)
            break;
    }
}
