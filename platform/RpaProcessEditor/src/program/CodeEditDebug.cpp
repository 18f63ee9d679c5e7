// SPDX-License-Identifier: Apache-2.0

// The stopped line, lines that move, and names under the pointer.
#include "CodeEdit_p.h"

#include <QHelpEvent>
#include <QRegularExpression>
#include <QScrollBar>
#include <QTextBlock>

void CodeEdit::SetBreakpoints(const QHash<int, BreakpointMark>& marks)
{
    breakpoints = marks;
    MarkCurrent(); // repaints the gutter
}

void CodeEdit::SetStoppedLine(int line, bool innermost)
{
    if (line == stoppedLine && innermost == stoppedInnermost)
        return;
    stoppedLine = line;
    stoppedInnermost = innermost;
    MarkCurrent();
}

// The author may be typing elsewhere: the text cursor stays.
void CodeEdit::RevealLine(int line)
{
    const QTextCursor kept = textCursor();
    const QTextBlock block = document()->findBlockByNumber(qBound(1, line, blockCount()) - 1);
    const qreal top = blockBoundingGeometry(block).translated(contentOffset()).top();
    const bool isShown = block.blockNumber() >= firstVisibleBlock().blockNumber() &&
                         top + blockBoundingRect(block).height() <= viewport()->height();
    if (isShown)
        return;
    setTextCursor(QTextCursor(block));
    centerCursor();
    const int place = verticalScrollBar()->value();
    setTextCursor(kept);
    verticalScrollBar()->setValue(place);
}

void CodeEdit::FollowLines(int position)
{
    const int by = blockCount() - lineCount;
    lineCount = blockCount();
    if (by == 0)
        return;
    const QTextBlock block = document()->findBlock(position);
    // At its beginning the line itself moves, or goes; else those behind it.
    const int first = block.blockNumber() + (block.position() == position ? 1 : 2);
    emit SigLinesMoved(first, by);
}

QString CodeEdit::NameAt(const QPoint& position) const
{
    const QTextCursor cursor = cursorForPosition(position);
    const QString line = cursor.block().text();
    const QRect drawn = cursorRect(cursor);
    // Behind the end of a line the nearest place is its end.
    if (cursor.atBlockEnd() && position.x() > drawn.right() + fontMetrics().averageCharWidth())
        return QString();
    static const QRegularExpression names(QStringLiteral("[^\\W\\d]\\w*(?:\\.[^\\W\\d]\\w*)*"),
                                          QRegularExpression::UseUnicodePropertiesOption);
    const int column = cursor.positionInBlock();
    QRegularExpressionMatchIterator each = names.globalMatch(line);
    while (each.hasNext()) {
        const QRegularExpressionMatch match = each.next();
        if (column < match.capturedStart() || column > match.capturedEnd())
            continue;
        // Of "a.b.c" what ends with the part that is pointed at.
        const int dot = line.indexOf(QLatin1Char('.'), column);
        const int end = dot >= 0 && dot < match.capturedEnd() ? dot : match.capturedEnd();
        return line.mid(match.capturedStart(), end - match.capturedStart());
    }
    return QString();
}

bool CodeEdit::viewportEvent(QEvent* event)
{
    if (event->type() == QEvent::ToolTip && tellsNames) {
        const auto* help = static_cast<QHelpEvent*>(event);
        const QString name = NameAt(help->pos());
        if (!name.isEmpty())
            emit SigNameHovered(name, help->globalPos());
        return true;
    }
    return QPlainTextEdit::viewportEvent(event);
}
