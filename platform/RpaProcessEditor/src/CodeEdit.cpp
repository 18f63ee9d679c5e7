#include "CodeEdit_p.h"
#include "CodeHighlighter_p.h"

#include <WbBaseUI/WbTheme.h>

#include <QPainter>
#include <QSyntaxHighlighter>
#include <QTextBlock>
#include <QTextLayout>

#include <functional>

namespace
{
constexpr int indentWidth = 4;
constexpr int bracketReach = 20000; // characters; farther partners are not looked for
constexpr int smallestZoom = -6;
constexpr int largestZoom = 20;

QColor Colour(WbColor colour)
{
    return WbTheme::Instance()->Color(colour);
}

int IndentOf(const QString& line)
{
    int width = 0;
    while (width < line.size() && line.at(width) == QLatin1Char(' '))
        ++width;
    return width;
}

// The bracket that pairs with the one at the position; -1 without.
int PartnerOf(const QTextDocument& document, int position)
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
} // namespace

// The strip with the line numbers; a click selects the line.
class CodeGutter : public QWidget
{
    Q_OBJECT

public:
    explicit CodeGutter(CodeEdit* owner) : QWidget(owner), edit(owner)
    {
        setObjectName(QStringLiteral("codeGutter"));
    }

    QSize sizeHint() const override { return QSize(edit->GutterWidth(), 0); }

protected:
    void paintEvent(QPaintEvent* event) override { edit->PaintGutter(event); }

    void mousePressEvent(QMouseEvent* event) override
    {
        QTextCursor cursor = edit->cursorForPosition(QPoint(0, event->pos().y()));
        cursor.select(QTextCursor::LineUnderCursor);
        edit->setTextCursor(cursor);
        edit->setFocus();
    }

private:
    CodeEdit* edit;
};

CodeEdit::CodeEdit(QWidget* parent)
    : QPlainTextEdit(parent), gutter(new CodeGutter(this)), highlighter(MakePythonHighlighter(*document()))
{
    setObjectName(QStringLiteral("codeEdit"));
    setAccessibleName(QStringLiteral("程序代码"));
    setLineWrapMode(QPlainTextEdit::NoWrap);
    setFrameShape(QFrame::NoFrame);
    connect(this, &QPlainTextEdit::blockCountChanged, this, &CodeEdit::LayoutGutter);
    connect(this, &QPlainTextEdit::cursorPositionChanged, this, &CodeEdit::MarkCurrent);
    connect(this, &QPlainTextEdit::updateRequest, this, [this](const QRect& rect, int dy) {
        if (dy != 0)
            gutter->scroll(0, dy);
        else
            gutter->update(0, rect.y(), gutter->width(), rect.height());
    });
    connect(WbTheme::Instance(), &WbTheme::SigChanged, this, &CodeEdit::ApplyTheme);
    ApplyTheme();
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
    setTabStopDistance(QFontMetricsF(font).horizontalAdvance(QLatin1Char(' ')) * indentWidth);
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

int CodeEdit::GutterWidth() const
{
    const QFontMetrics metrics(document()->defaultFont());
    return metrics.horizontalAdvance(QLatin1Char('9')) * qMax(3, QString::number(blockCount()).size()) + 20;
}

void CodeEdit::LayoutGutter()
{
    setViewportMargins(GutterWidth(), 0, 0, 0);
    const QRect contents = contentsRect();
    gutter->setGeometry(contents.left(), contents.top(), GutterWidth(), contents.height());
    gutter->update();
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

void CodeEdit::PaintGutter(QPaintEvent* event)
{
    QPainter painter(gutter);
    painter.fillRect(event->rect(), Colour(WbColor::Surface));
    painter.setFont(document()->defaultFont());
    const int current = textCursor().blockNumber();
    QTextBlock block = firstVisibleBlock();
    qreal top = blockBoundingGeometry(block).translated(contentOffset()).top();
    while (block.isValid() && top <= event->rect().bottom()) {
        const qreal height = blockBoundingRect(block).height();
        const bool here = block.blockNumber() == current;
        painter.setPen(Colour(here ? WbColor::Text : WbColor::TextDisabled));
        // Chinese text comes from a taller font: the number stands on the line's own base line.
        const QTextLayout* text = block.layout();
        const qreal lower =
            text->lineCount() > 0 ? text->lineAt(0).ascent() - painter.fontMetrics().ascent() : 0.0;
        painter.drawText(QRectF(0, top + qMax(0.0, lower), gutter->width() - 10, height),
                         Qt::AlignRight | Qt::AlignTop, QString::number(block.blockNumber() + 1));
        top += height;
        block = block.next();
    }
}

void CodeEdit::MarkCurrent()
{
    QList<QTextEdit::ExtraSelection> marks;
    QTextEdit::ExtraSelection line;
    line.format.setBackground(Colour(WbColor::CodeCurrentLine));
    line.format.setProperty(QTextFormat::FullWidthSelection, true);
    line.cursor = textCursor();
    line.cursor.clearSelection();
    marks.append(line);
    marks += found;
    MarkBrackets(marks);
    setExtraSelections(marks);
    gutter->update();
}

void CodeEdit::MarkBrackets(QList<QTextEdit::ExtraSelection>& marks) const
{
    const int here = textCursor().position();
    for (const int position : {here, here - 1}) {
        const int partner = position < 0 ? -1 : PartnerOf(*document(), position);
        if (partner < 0)
            continue;
        for (const int each : {position, partner}) {
            QTextEdit::ExtraSelection mark;
            mark.format.setBackground(Colour(WbColor::AccentSoft));
            mark.format.setForeground(Colour(WbColor::AccentText));
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
    else if (!(plain && event->key() == Qt::Key_Backspace && DeleteIndent()))
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

// The new line starts where the old one did, deeper behind a colon, less deep behind what ends a block.
void CodeEdit::BreakLine()
{
    QTextCursor cursor = textCursor();
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
    setTextCursor(cursor);
    ensureCursorVisible();
}

// Backspace in the indentation takes one level.
bool CodeEdit::DeleteIndent()
{
    QTextCursor cursor = textCursor();
    const int column = cursor.positionInBlock();
    if (cursor.hasSelection() || column == 0 || !cursor.block().text().left(column).trimmed().isEmpty())
        return false;
    const int width = (column - 1) % indentWidth + 1;
    cursor.movePosition(QTextCursor::Left, QTextCursor::KeepAnchor, width);
    cursor.removeSelectedText();
    return true;
}

void CodeEdit::EachSelectedLine(const std::function<void(QTextCursor&)>& act)
{
    QTextCursor cursor = textCursor();
    QTextBlock block = document()->findBlock(cursor.selectionStart());
    QTextBlock last = document()->findBlock(cursor.selectionEnd());
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

void CodeEdit::Indent()
{
    QTextCursor cursor = textCursor();
    if (!cursor.hasSelection()) {
        const int width = indentWidth - cursor.positionInBlock() % indentWidth;
        cursor.insertText(QString(width, QLatin1Char(' ')));
        return;
    }
    EachSelectedLine([](QTextCursor& line) {
        if (!line.block().text().trimmed().isEmpty())
            line.insertText(QString(indentWidth, QLatin1Char(' ')));
    });
}

void CodeEdit::Outdent()
{
    EachSelectedLine([](QTextCursor& line) {
        const QString text = line.block().text();
        const int width = text.startsWith(QLatin1Char('\t')) ? 1 : qMin(IndentOf(text), indentWidth);
        line.movePosition(QTextCursor::Right, QTextCursor::KeepAnchor, width);
        line.removeSelectedText();
    });
}

void CodeEdit::ToggleComment()
{
    bool allComments = true;
    int indent = INT_MAX;
    EachSelectedLine([&allComments, &indent](QTextCursor& line) {
        const QString text = line.block().text();
        if (text.trimmed().isEmpty())
            return;
        allComments = allComments && text.trimmed().startsWith(QLatin1Char('#'));
        indent = qMin(indent, IndentOf(text));
    });
    EachSelectedLine([allComments, indent](QTextCursor& line) {
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

void CodeEdit::MoveLines(int direction)
{
    QTextCursor cursor = textCursor();
    const QTextBlock first = document()->findBlock(cursor.selectionStart());
    const QTextBlock last = document()->findBlock(cursor.selectionEnd());
    const QTextBlock neighbour = direction < 0 ? first.previous() : last.next();
    if (!neighbour.isValid())
        return;
    const QString text = neighbour.text();
    const int anchor = cursor.anchor() + direction * (text.size() + 1);
    const int position = cursor.position() + direction * (text.size() + 1);
    const int start = direction < 0 ? neighbour.position() : first.position();
    const int length = direction < 0 ? last.position() + last.length() - 1 - start
                                     : neighbour.position() + neighbour.length() - 1 - start;
    QTextCursor lines(document());
    lines.setPosition(start);
    lines.setPosition(start + length, QTextCursor::KeepAnchor);
    QString moved = lines.selectedText();
    moved = direction < 0
                ? moved.mid(text.size() + 1) + QChar(QChar::ParagraphSeparator) + text
                : text + QChar(QChar::ParagraphSeparator) + moved.left(moved.size() - text.size() - 1);
    lines.insertText(moved);
    cursor.setPosition(anchor);
    cursor.setPosition(position, QTextCursor::KeepAnchor);
    setTextCursor(cursor);
}

void CodeEdit::DuplicateLines()
{
    QTextCursor cursor = textCursor();
    const QTextBlock last = document()->findBlock(cursor.selectionEnd());
    QTextCursor lines(document());
    lines.setPosition(document()->findBlock(cursor.selectionStart()).position());
    lines.setPosition(last.position() + last.length() - 1, QTextCursor::KeepAnchor);
    const QString text = lines.selectedText();
    lines.setPosition(lines.selectionEnd());
    lines.insertText(QChar(QChar::ParagraphSeparator) + text);
}

#include "CodeEdit.moc"
