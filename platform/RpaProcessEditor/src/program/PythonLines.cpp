// SPDX-License-Identifier: Apache-2.0

#include "PythonLines_p.h"

#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>

#include <climits>
#include <functional>

namespace
{
constexpr int bracketReach = 20000; // characters; farther partners are not looked for

int IndentOf(const QString& line)
{
    int width = 0;
    while (width < line.size() && line.at(width) == QLatin1Char(' '))
        ++width;
    return width;
}

void EachLine(QTextCursor cursor, const std::function<void(QTextCursor&)>& act)
{
    const QTextDocument* document = cursor.document();
    QTextBlock block = document->findBlock(cursor.selectionStart());
    QTextBlock last = document->findBlock(cursor.selectionEnd());
    // A selection that ends before the first character of a line does not mean that line.
    if (cursor.hasSelection() && last != block && cursor.selectionEnd() == last.position())
        last = last.previous();
    const int lastNumber = last.blockNumber();
    cursor.beginEditBlock();
    for (; block.isValid() && block.blockNumber() <= lastNumber; block = block.next()) {
        QTextCursor line(block);
        act(line);
    }
    cursor.endEditBlock();
}
} // namespace

void PythonLines::Break(QTextCursor& cursor)
{
    const QString before =
        cursor.block().text().left(cursor.hasSelection() ? cursor.selectionStart() - cursor.block().position()
                                                         : cursor.positionInBlock());
    int indent = qMin(IndentOf(before), before.size());
    const QString code = before.trimmed();
    static const QStringList enders{QStringLiteral("return"), QStringLiteral("break"),
                                    QStringLiteral("continue"), QStringLiteral("pass"),
                                    QStringLiteral("raise")};
    if (code.endsWith(QLatin1Char(':')))
        indent += indentWidth;
    else if (enders.contains(code.section(QLatin1Char(' '), 0, 0)))
        indent = qMax(0, indent - indentWidth);
    cursor.insertText(QLatin1Char('\n') + QString(indent, QLatin1Char(' ')));
}

bool PythonLines::DeleteIndent(QTextCursor cursor)
{
    const int column = cursor.positionInBlock();
    if (cursor.hasSelection() || column == 0 || !cursor.block().text().left(column).trimmed().isEmpty())
        return false;
    const int width = (column - 1) % indentWidth + 1;
    cursor.movePosition(QTextCursor::Left, QTextCursor::KeepAnchor, width);
    cursor.removeSelectedText();
    return true;
}

void PythonLines::Indent(QTextCursor cursor)
{
    if (!cursor.hasSelection()) {
        const int width = indentWidth - cursor.positionInBlock() % indentWidth;
        cursor.insertText(QString(width, QLatin1Char(' ')));
        return;
    }
    EachLine(cursor, [](QTextCursor& line) {
        if (!line.block().text().trimmed().isEmpty())
            line.insertText(QString(indentWidth, QLatin1Char(' ')));
    });
}

void PythonLines::Outdent(const QTextCursor& cursor)
{
    EachLine(cursor, [](QTextCursor& line) {
        const QString text = line.block().text();
        const int width = text.startsWith(QLatin1Char('\t')) ? 1 : qMin(IndentOf(text), indentWidth);
        line.movePosition(QTextCursor::Right, QTextCursor::KeepAnchor, width);
        line.removeSelectedText();
    });
}

void PythonLines::ToggleComment(const QTextCursor& cursor)
{
    bool allComments = true;
    int indent = INT_MAX;
    EachLine(cursor, [&allComments, &indent](QTextCursor& line) {
        const QString text = line.block().text();
        if (text.trimmed().isEmpty())
            return;
        allComments = allComments && text.trimmed().startsWith(QLatin1Char('#'));
        indent = qMin(indent, IndentOf(text));
    });
    EachLine(cursor, [allComments, indent](QTextCursor& line) {
        const QString text = line.block().text();
        if (text.trimmed().isEmpty())
            return;
        if (!allComments) {
            line.movePosition(QTextCursor::Right, QTextCursor::MoveAnchor, indent);
            line.insertText(QStringLiteral("# "));
            return;
        }
        const int mark = text.indexOf(QLatin1Char('#'));
        line.movePosition(QTextCursor::Right, QTextCursor::MoveAnchor, mark);
        line.movePosition(QTextCursor::Right, QTextCursor::KeepAnchor,
                          text.midRef(mark, 2) == QLatin1String("# ") ? 2 : 1);
        line.removeSelectedText();
    });
}

bool PythonLines::Move(QTextCursor& cursor, int direction)
{
    const QTextBlock first = cursor.document()->findBlock(cursor.selectionStart());
    const QTextBlock last = cursor.document()->findBlock(cursor.selectionEnd());
    const QTextBlock neighbour = direction < 0 ? first.previous() : last.next();
    if (!neighbour.isValid())
        return false;
    const QString text = neighbour.text();
    const int anchor = cursor.anchor() + direction * (text.size() + 1);
    const int position = cursor.position() + direction * (text.size() + 1);
    const int start = direction < 0 ? neighbour.position() : first.position();
    const int length = direction < 0 ? last.position() + last.length() - 1 - start
                                     : neighbour.position() + neighbour.length() - 1 - start;
    QTextCursor lines(cursor.document());
    lines.setPosition(start);
    lines.setPosition(start + length, QTextCursor::KeepAnchor);
    QString moved = lines.selectedText();
    moved = direction < 0
                ? moved.mid(text.size() + 1) + QChar(QChar::ParagraphSeparator) + text
                : text + QChar(QChar::ParagraphSeparator) + moved.left(moved.size() - text.size() - 1);
    lines.insertText(moved);
    cursor.setPosition(anchor);
    cursor.setPosition(position, QTextCursor::KeepAnchor);
    return true;
}

void PythonLines::Duplicate(const QTextCursor& cursor)
{
    const QTextBlock last = cursor.document()->findBlock(cursor.selectionEnd());
    QTextCursor lines(cursor.document());
    lines.setPosition(cursor.document()->findBlock(cursor.selectionStart()).position());
    lines.setPosition(last.position() + last.length() - 1, QTextCursor::KeepAnchor);
    const QString text = lines.selectedText();
    lines.setPosition(lines.selectionEnd());
    lines.insertText(QChar(QChar::ParagraphSeparator) + text);
}

int PythonLines::PartnerOf(const QTextDocument& document, int position)
{
    static const QString brackets = QStringLiteral("()[]{}");
    const int kind = brackets.indexOf(document.characterAt(position));
    if (kind < 0)
        return -1;
    const int direction = kind % 2 == 0 ? 1 : -1;
    const QChar own = brackets.at(kind);
    const QChar other = brackets.at(kind + direction);
    int depth = 0;
    for (int i = position, steps = 0; i >= 0 && i < document.characterCount() && steps < bracketReach;
         i += direction, ++steps) {
        const QChar c = document.characterAt(i);
        depth += c == own ? 1 : c == other ? -1 : 0;
        if (depth == 0)
            return i;
    }
    return -1;
}
