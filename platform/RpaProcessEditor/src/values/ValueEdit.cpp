// SPDX-License-Identifier: Apache-2.0

#include "ValueChip_p.h"
#include "ValueEdit_p.h"

#include <OxBase/DpiTool.h>
#include <WbBaseUI/WbLineLimit.h>
#include <WbBaseUI/WbToast.h>

#include <QAbstractTextDocumentLayout>
#include <QKeyEvent>
#include <QMimeData>
#include <QScopedValueRollback>
#include <QTextBlock>

namespace
{
using Kind = RpaValuePart::Kind;

const QString mimeType = QStringLiteral("application/x-rpa-value");
constexpr int shownLines = 4;

// Characters that stand for pieces and ends of lines in a document have no place in its text.
QString Cleaned(QString text, bool oneLine)
{
    text.remove(QChar::ObjectReplacementCharacter);
    text.replace(QLatin1String("\r\n"), QLatin1String("\n")).replace(QLatin1Char('\r'), QLatin1Char('\n'));
    return oneLine ? text.replace(QLatin1Char('\n'), QLatin1Char(' ')) : text;
}
} // namespace

ValueEdit::ValueEdit(Lines shown, QWidget* parent) : QTextEdit(parent), lines(shown)
{
    setAcceptRichText(false);
    setTabChangesFocus(true);
    document()->documentLayout()->registerHandler(ValueChip::objectType, new ValueChip(document()));
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setViewportMargins(DpiTool::ScaleDefault(3), 0, DpiTool::ScaleDefault(3), 0); // as in a line edit
    if (lines == Lines::One) {
        setLineWrapMode(NoWrap);
        setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    }
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    FitHeight();
    connect(document(), &QTextDocument::contentsChanged, this, &ValueEdit::SlotContentsChanged);
}

// As high as a line edit, or four lines; the frame and the padding come from the style sheet.
void ValueEdit::FitHeight()
{
    const int line = fontMetrics().height();
    const int around = 2 * DpiTool::ScaleDefault(5);
    if (lines == Lines::Several) {
        setFixedHeight(line * shownLines + around + DpiTool::ScaleDefault(6));
        return;
    }
    const int height = qMax(DpiTool::ScaleDefault(32), line + around + 2);
    setFixedHeight(height);
}

// In the middle of a single line, whatever frame the style sheet gives.
void ValueEdit::resizeEvent(QResizeEvent* event)
{
    QTextEdit::resizeEvent(event);
    const int line = QFontMetrics(document()->defaultFont()).height();
    if (lines == Lines::One)
        document()->setDocumentMargin(qMax(0, (viewport()->height() - line) / 2));
}

QSize ValueEdit::sizeHint() const
{
    return {DpiTool::ScaleDefault(60), height()};
}

void ValueEdit::changeEvent(QEvent* event)
{
    QTextEdit::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        FitHeight();
}

void ValueEdit::Write(QTextCursor& cursor, const RpaValuePart& part) const
{
    if (part.kind != Kind::Code) {
        cursor.insertText(Cleaned(part.text, lines == Lines::One), QTextCharFormat());
        return;
    }
    QTextCharFormat format;
    format.setObjectType(ValueChip::objectType);
    format.setProperty(ValueChip::pythonProperty, part.text);
    format.setVerticalAlignment(QTextCharFormat::AlignBottom);
    cursor.insertText(QString(QChar::ObjectReplacementCharacter), format);
    cursor.setCharFormat(QTextCharFormat());
}

void ValueEdit::SetParts(const QVector<RpaValuePart>& parts)
{
    const QScopedValueRollback<bool> noSignal(quiet, true);
    clear();
    QTextCursor cursor(document());
    for (const RpaValuePart& part : parts)
        Write(cursor, part);
    document()->clearUndoRedoStacks();
    told = Parts();
    if (!hasFocus())
        moveCursor(QTextCursor::Start); // a long text is read from its beginning
}

QVector<RpaValuePart> ValueEdit::Parts() const
{
    return PartsWithin(0, document()->characterCount());
}

QVector<RpaValuePart> ValueEdit::PartsWithin(int begin, int end) const
{
    QVector<RpaValuePart> parts;
    const auto addText = [&parts](const QString& text) {
        if (!parts.isEmpty() && parts.last().kind == Kind::Text)
            parts.last().text += text;
        else if (!text.isEmpty())
            parts.append({Kind::Text, text});
    };
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
        if (block.position() > begin && block.position() <= end && block != document()->begin())
            addText(QStringLiteral("\n"));
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextFragment piece = it.fragment();
            const int from = qMax(begin, piece.position());
            const int to = qMin(end, piece.position() + piece.length());
            if (from >= to)
                continue;
            const QString text = piece.text().mid(from - piece.position(), to - from);
            const QString python = piece.charFormat().property(ValueChip::pythonProperty).toString();
            // Equal pieces side by side are one fragment.
            for (const QChar c : text)
                if (c == QChar::ObjectReplacementCharacter)
                    parts.append({Kind::Code, python});
                else
                    addText(c == QChar::LineSeparator ? QStringLiteral("\n") : QString(c));
        }
    }
    return parts;
}

void ValueEdit::Insert(const RpaValuePart& part)
{
    QTextCursor cursor = textCursor();
    cursor.beginEditBlock();
    cursor.removeSelectedText();
    Write(cursor, part);
    cursor.endEditBlock();
    setTextCursor(cursor);
    setCurrentCharFormat(QTextCharFormat());
}

void ValueEdit::SetCursor(int position)
{
    QTextCursor cursor(document());
    cursor.setPosition(qBound(0, position, document()->characterCount() - 1));
    setTextCursor(cursor);
}

void ValueEdit::SlotContentsChanged()
{
    if (quiet)
        return;
    const QVector<RpaValuePart> parts = Parts();
    if (parts == told)
        return;
    told = parts;
    emit SigEdited();
}

void ValueEdit::keyPressEvent(QKeyEvent* event)
{
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (event->key() == Qt::Key_Space && event->modifiers() == Qt::ControlModifier) {
        emit SigPickAsked();
        return;
    }
    if (enter && lines == Lines::One) {
        event->ignore();
        emit SigFinished();
        return;
    }
    // What is typed next to a piece is no part of it.
    if (!textCursor().hasSelection())
        setCurrentCharFormat(QTextCharFormat());
    QTextEdit::keyPressEvent(event);
}

void ValueEdit::inputMethodEvent(QInputMethodEvent* event)
{
    if (!event->commitString().isEmpty() && !textCursor().hasSelection())
        setCurrentCharFormat(QTextCharFormat());
    QTextEdit::inputMethodEvent(event);
}

void ValueEdit::focusOutEvent(QFocusEvent* event)
{
    QTextEdit::focusOutEvent(event);
    if (event->reason() != Qt::PopupFocusReason)
        emit SigFinished();
}

QMimeData* ValueEdit::createMimeDataFromSelection() const
{
    const RpaValue value{PartsWithin(textCursor().selectionStart(), textCursor().selectionEnd()), true};
    QString text;
    for (const RpaValuePart& part : value.parts)
        text += part.kind == Kind::Code ? QLatin1Char('{') + part.text + QLatin1Char('}') : part.text;
    auto* mime = new QMimeData; // the clipboard owns it
    mime->setText(text);
    mime->setData(mimeType, value.ToPython().toUtf8());
    return mime;
}

bool ValueEdit::canInsertFromMimeData(const QMimeData* source) const
{
    return source->hasText();
}

void ValueEdit::insertFromMimeData(const QMimeData* source)
{
    if (source->text().size() > WbLineLimit::mostCharacters) {
        WbToast::Show(QStringLiteral("粘贴的内容太长，没有粘贴"), ToastWarning);
        return;
    }
    const QByteArray python = source->data(mimeType);
    const auto value = RpaValue::ReadText(QString::fromUtf8(python));
    QTextCursor cursor = textCursor();
    cursor.beginEditBlock();
    cursor.removeSelectedText();
    if (value && !value->IsEmpty())
        for (const RpaValuePart& part : value->parts)
            Write(cursor, part);
    else
        Write(cursor, {Kind::Text, source->text()});
    cursor.endEditBlock();
    setTextCursor(cursor);
    ensureCursorVisible();
}
