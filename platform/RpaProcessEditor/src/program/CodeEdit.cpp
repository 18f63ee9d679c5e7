// SPDX-License-Identifier: Apache-2.0

#include "CodeEdit_p.h"
#include "CodeFolds_p.h"
#include "CodeHighlighter_p.h"
#include "PythonLines_p.h"

#include <WbBaseUI/WbTextLimit.h>
#include <WbBaseUI/WbTheme.h>

#include <QSyntaxHighlighter>
#include <QTextBlock>

namespace
{
constexpr int smallestZoom = -6;
constexpr int largestZoom = 20;

QColor ThemeColour(WbColor colour)
{
    return WbTheme::Instance()->Color(colour);
}

QTextEdit::ExtraSelection LineMark(const QTextCursor& cursor, WbColor colour)
{
    QTextEdit::ExtraSelection mark;
    mark.format.setBackground(ThemeColour(colour));
    mark.format.setProperty(QTextFormat::FullWidthSelection, true);
    mark.cursor = cursor;
    mark.cursor.clearSelection();
    return mark;
}
} // namespace

CodeEdit::CodeEdit(QWidget* parent)
    : QPlainTextEdit(parent), gutter(MakeGutter()), highlighter(MakePythonHighlighter(*document()))
{
    setObjectName(QStringLiteral("codeEdit"));
    setAccessibleName(QStringLiteral("程序代码"));
    setLineWrapMode(QPlainTextEdit::NoWrap);
    setFrameShape(QFrame::NoFrame);
    new WbTextLimit(this, QStringLiteral("流程的代码"));
    connect(this, &QPlainTextEdit::blockCountChanged, this, &CodeEdit::LayoutGutter);
    connect(this, &QPlainTextEdit::cursorPositionChanged, this, &CodeEdit::MarkCurrent);
    connect(this, &QPlainTextEdit::textChanged, this, [this] {
        if (document()->isEmpty() == marksLine)
            MarkCurrent();
    });
    connect(document(), &QTextDocument::contentsChange, this, &CodeEdit::FollowLines);
    connect(this, &QPlainTextEdit::updateRequest, this, [this](const QRect& rect, int dy) {
        if (dy != 0)
            gutter->scroll(0, dy);
        else
            gutter->update(0, rect.y(), gutter->width(), rect.height());
    });
    connect(WbTheme::Instance(), &WbTheme::SigChanged, this, &CodeEdit::ApplyTheme);
    ApplyTheme();
    folds = new CodeFolds(this, gutter);
}

CodeEdit::~CodeEdit() = default;

void CodeEdit::LoadText(const QString& text)
{
    setPlainText(text);
    document()->setModified(false);
}

void CodeEdit::ApplyTheme()
{
    QFont font = WbTheme::CodeFont();
    if (font.pointSizeF() > 0)
        font.setPointSizeF(font.pointSizeF() + zoomed);
    else
        font.setPixelSize(font.pixelSize() + zoomed);
    setFont(font);
    // A style sheet of the application has the last word on fonts, but not on that of the document.
    document()->setDefaultFont(font);
    setTabStopDistance(QFontMetricsF(font).horizontalAdvance(QLatin1Char(' ')) * PythonLines::indentWidth);
    highlighter->rehighlight();
    LayoutGutter();
    MarkCurrent();
}

void CodeEdit::Zoom(int steps)
{
    zoomed = steps == 0 ? 0 : qBound(smallestZoom, zoomed + steps, largestZoom);
    ApplyTheme();
}

void CodeEdit::GoToLine(int line)
{
    const QTextBlock block = document()->findBlockByNumber(qBound(1, line, blockCount()) - 1);
    setTextCursor(QTextCursor(block));
    centerCursor();
    setFocus();
}

void CodeEdit::SetFoundMarks(const QList<QTextEdit::ExtraSelection>& marks)
{
    found = marks;
    MarkCurrent();
}

void CodeEdit::resizeEvent(QResizeEvent* event)
{
    QPlainTextEdit::resizeEvent(event);
    LayoutGutter();
}

void CodeEdit::changeEvent(QEvent* event)
{
    QPlainTextEdit::changeEvent(event);
    if (event->type() == QEvent::FontChange && gutter)
        LayoutGutter();
}

void CodeEdit::MarkCurrent()
{
    QList<QTextEdit::ExtraSelection> marks;
    marksLine = !document()->isEmpty();
    if (marksLine) // else it would lie over the placeholder
        marks.append(LineMark(textCursor(), WbColor::CodeCurrentLine));
    if (stoppedLine > 0)
        marks.append(
            LineMark(QTextCursor(document()->findBlockByNumber(stoppedLine - 1)), WbColor::ExecutionLine));
    if (failedLine > 0)
        marks.append(
            LineMark(QTextCursor(document()->findBlockByNumber(failedLine - 1)), WbColor::DangerSoft));
    marks += found;
    MarkBrackets(marks);
    setExtraSelections(marks);
    gutter->update();
}

void CodeEdit::SetFailedLine(int line)
{
    if (line == failedLine)
        return;
    failedLine = line;
    MarkCurrent();
}

void CodeEdit::MarkBrackets(QList<QTextEdit::ExtraSelection>& marks) const
{
    const int here = textCursor().position();
    for (const int position : {here, here - 1}) {
        const int partner = position < 0 ? -1 : PythonLines::PartnerOf(*document(), position);
        if (partner < 0)
            continue;
        for (const int each : {position, partner}) {
            QTextEdit::ExtraSelection mark;
            mark.format.setBackground(ThemeColour(WbColor::AccentSoft));
            mark.format.setForeground(ThemeColour(WbColor::AccentText));
            mark.cursor = QTextCursor(document());
            mark.cursor.setPosition(each);
            mark.cursor.movePosition(QTextCursor::NextCharacter, QTextCursor::KeepAnchor);
            marks.append(mark);
        }
        return;
    }
}

void CodeEdit::keyPressEvent(QKeyEvent* event)
{
    const auto modifiers = event->modifiers() & ~Qt::KeypadModifier;
    const bool plain = modifiers == Qt::NoModifier;
    const bool shift = modifiers == Qt::ShiftModifier;
    if (plain && (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter))
        BreakLine();
    else if (plain && event->key() == Qt::Key_Tab)
        Indent();
    else if (event->key() == Qt::Key_Backtab || (shift && event->key() == Qt::Key_Tab))
        Outdent();
    else if (!(plain && event->key() == Qt::Key_Backspace && PythonLines::DeleteIndent(textCursor())))
        QPlainTextEdit::keyPressEvent(event);
}

void CodeEdit::wheelEvent(QWheelEvent* event)
{
    if (event->modifiers().testFlag(Qt::ControlModifier)) {
        if (event->angleDelta().y() != 0)
            Zoom(event->angleDelta().y() > 0 ? 1 : -1);
        event->accept();
        return;
    }
    QPlainTextEdit::wheelEvent(event);
}

void CodeEdit::BreakLine()
{
    QTextCursor cursor = textCursor();
    PythonLines::Break(cursor);
    setTextCursor(cursor);
    ensureCursorVisible();
}

void CodeEdit::Indent()
{
    PythonLines::Indent(textCursor());
}

void CodeEdit::Outdent()
{
    PythonLines::Outdent(textCursor());
}

void CodeEdit::ToggleComment()
{
    PythonLines::ToggleComment(textCursor());
}

void CodeEdit::MoveLines(int direction)
{
    QTextCursor cursor = textCursor();
    if (PythonLines::Move(cursor, direction))
        setTextCursor(cursor);
}

void CodeEdit::DuplicateLines()
{
    PythonLines::Duplicate(textCursor());
}
