// SPDX-License-Identifier: Apache-2.0

#include "RichFormats_p.h"
#include "RichHtmlSanitizer_p.h"
#include "RichHtmlWriter_p.h"
#include "RichOpening_p.h"
#include "RichTextView_p.h"
#include "RichWords_p.h"

#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QHelpEvent>
#include <QMimeData>
#include <QTextBlock>
#include <QTextDocumentFragment>
#include <QTextList>
#include <QTextTable>
#include <QToolTip>
#include <QUrl>

namespace
{
constexpr qint64 maximumPictureFile = 32 * 1024 * 1024;
constexpr int widestShownPicture = 640;

QSharedPointer<RichImages> NewImages()
{
    return QSharedPointer<RichImages>::create();
}

// Black and white of other programs mean "the colour of text and page there"; kept, they vanish in the other
// theme.
bool IsThemeColour(const QBrush& brush)
{
    const QColor& colour = brush.color();
    return colour.hslSaturation() < 30 && (colour.lightness() < 70 || colour.lightness() > 240);
}

void DropThemeColours(QTextDocument& document)
{
    QVector<QPair<int, int>> ranges;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextFragment fragment = it.fragment();
            const QTextCharFormat format = fragment.charFormat();
            if (format.hasProperty(QTextFormat::ForegroundBrush) ||
                format.hasProperty(QTextFormat::BackgroundBrush))
                ranges.append({fragment.position(), fragment.length()});
        }
    }
    QTextCursor cursor(&document);
    for (const auto& range : qAsConst(ranges)) {
        cursor.setPosition(range.first);
        cursor.setPosition(range.first + range.second, QTextCursor::KeepAnchor);
        QTextCharFormat format = cursor.charFormat();
        if (IsThemeColour(format.foreground()))
            format.clearForeground();
        if (IsThemeColour(format.background()))
            format.clearBackground();
        cursor.setCharFormat(format);
    }
}
} // namespace

RichTextView::RichTextView(QWidget* parent) : QTextEdit(parent)
{
    setAcceptRichText(true);
    setMouseTracking(true);
    viewport()->setMouseTracking(true);
    setTabChangesFocus(false);
    setAccessibleName(QStringLiteral("使用说明正文"));
    LoadText(QString());
}

void RichTextView::LoadText(const QString& text)
{
    OpenedText opened = OpenRichText(text, font(), palette().color(QPalette::Link));
    problem = opened.problem;
    complete = opened.complete;
    setReadOnly(!problem.isEmpty());
    ReplaceDocument(std::move(opened.document));
}

void RichTextView::ReplaceDocument(std::unique_ptr<RichDocument> document)
{
    RichDocument* former = current;
    current = document.release();
    current->setParent(this);
    // They are places of the former document; Qt would ask them once more when others take their place.
    setExtraSelections({});
    setDocument(current);
    delete former;
    emit SigDocumentReplaced();
}

void RichTextView::RecolourLinks()
{
    const QColor link = palette().color(QPalette::Link);
    current->SetLook(font(), link);
    current->RecolourLinks(link);
}

bool RichTextView::InsertPicture(const QString& name)
{
    const QPixmap image = current->Images().Pixmap(name);
    if (image.isNull()) {
        emit SigRefused(QStringLiteral("无法插入图片：格式不支持，或图片总量已超过上限"));
        return false;
    }
    const int page = qMax(120, viewport()->width() - 2 * qRound(current->documentMargin()));
    const int width = qMin(image.width(), qMin(page, widestShownPicture));
    QTextImageFormat format;
    format.setName(name);
    format.setWidth(width);
    format.setHeight(qMax(1, qRound(qreal(image.height()) * width / image.width())));
    QTextCursor cursor = textCursor();
    // A step of its own: it may be undone without what was typed before it.
    cursor.beginEditBlock();
    cursor.insertImage(format);
    cursor.endEditBlock();
    ensureCursorVisible();
    return true;
}

bool RichTextView::InsertPictureFile(const QString& path)
{
    QFile file(path);
    const QFileInfo info(path);
    if (!info.isFile() || info.size() > maximumPictureFile || !file.open(QIODevice::ReadOnly)) {
        emit SigRefused(QStringLiteral("无法读取图片文件，或文件超过 32 MB"));
        return false;
    }
    return InsertPicture(current->Images().AddEncoded(file.read(maximumPictureFile)));
}

void RichTextView::InsertForeignHtml(const QString& html)
{
    RichDocument scratch(NewImages());
    const QString tooMuch = scratch.LoadHtml(html);
    if (!tooMuch.isEmpty()) {
        emit SigRefused(QStringLiteral("粘贴的内容%1，已只粘贴文字").arg(tooMuch));
        PastePlainly(WordsOf(html).text);
        return;
    }
    DropThemeColours(scratch);
    const QString clean = RichHtmlWriter::Write(scratch, scratch.Images());
    QTextCursor cursor = textCursor();
    cursor.beginEditBlock();
    cursor.insertHtml(SanitizeHtml(clean, current->Images()).html);
    cursor.endEditBlock();
    setTextCursor(cursor);
    ensureCursorVisible();
}

void RichTextView::PastePlainly(const QString& text)
{
    QTextCursor cursor = textCursor();
    cursor.beginEditBlock();
    cursor.insertText(text);
    cursor.endEditBlock();
    ensureCursorVisible();
}

bool RichTextView::canInsertFromMimeData(const QMimeData* source) const
{
    return source->hasHtml() || source->hasImage() || source->hasText();
}

void RichTextView::insertFromMimeData(const QMimeData* source)
{
    Paste(*source);
    // Else the author would find only the words of the text when it is opened again.
    const QString tooMuch =
        SanitizeHtml(RichHtmlWriter::Write(*current, current->Images()), current->Images())
            .tally.GetProblem();
    if (tooMuch.isEmpty() || !current->isUndoAvailable())
        return;
    undo();
    emit SigRefused(QStringLiteral("没有粘贴：粘贴后使用说明%1").arg(tooMuch));
}

void RichTextView::Paste(const QMimeData& source)
{
    const bool bareImage = source.hasImage() && !source.hasText();
    if (source.hasHtml() && !bareImage) {
        InsertForeignHtml(source.html());
        return;
    }
    if (source.hasImage()) {
        InsertPicture(current->Images().Add(qvariant_cast<QImage>(source.imageData())));
        return;
    }
    const QList<QUrl> urls = source.urls();
    if (urls.size() == 1 && urls.first().isLocalFile()) {
        InsertPictureFile(urls.first().toLocalFile());
        return;
    }
    if (source.hasText())
        PastePlainly(source.text());
}

QMimeData* RichTextView::createMimeDataFromSelection() const
{
    // Short picture names mean nothing outside; others get the data.
    RichDocument selection(QSharedPointer<RichImages>::create(current->Images()));
    QTextCursor(&selection).insertFragment(textCursor().selection());
    auto* mime = new QMimeData; // the caller owns it
    mime->setText(textCursor().selection().toPlainText());
    mime->setHtml(RichHtmlWriter::Write(selection, selection.Images()));
    return mime;
}

void RichTextView::keyPressEvent(QKeyEvent* event)
{
    const bool plain = event->modifiers() == Qt::NoModifier || event->modifiers() == Qt::KeypadModifier;
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const bool tab = event->key() == Qt::Key_Tab && plain;
    const bool backTab = event->key() == Qt::Key_Backtab ||
                         (event->key() == Qt::Key_Tab && event->modifiers() == Qt::ShiftModifier);
    const bool handled = (enter && plain && (LeaveEmptyItem() || InsertParagraphBehindHeading())) ||
                         (tab && HandleTab(false)) || (backTab && HandleTab(true));
    if (handled) {
        ensureCursorVisible();
        event->accept();
        return;
    }
    QTextEdit::keyPressEvent(event);
}

bool RichTextView::InsertParagraphBehindHeading()
{
    QTextCursor cursor = textCursor();
    if (RichFormats::Heading(cursor) == 0 || !cursor.atBlockEnd() || cursor.hasSelection())
        return false;
    cursor.beginEditBlock();
    cursor.insertBlock();
    RichFormats::SetHeading(cursor, 0);
    cursor.endEditBlock();
    setTextCursor(cursor);
    setCurrentCharFormat(QTextCharFormat());
    return true;
}

bool RichTextView::LeaveEmptyItem()
{
    const QTextCursor cursor = textCursor();
    if (!cursor.currentList() || cursor.block().length() > 1)
        return false;
    RichFormats::ChangeIndent(cursor, -1);
    return true;
}

bool RichTextView::HandleTab(bool back)
{
    QTextCursor cursor = textCursor();
    if (QTextTable* table = cursor.currentTable()) {
        if (!back) {
            const QTextTableCell cell = table->cellAt(cursor);
            const bool last = cell.row() + cell.rowSpan() == table->rows() &&
                              cell.column() + cell.columnSpan() == table->columns();
            if (last)
                table->appendRows(1);
        }
        cursor.movePosition(back ? QTextCursor::PreviousCell : QTextCursor::NextCell);
        setTextCursor(cursor);
        return true;
    }
    const bool whole = cursor.hasSelection() || cursor.currentList() || cursor.atBlockStart();
    if (!whole && !back) {
        cursor.insertText(QString(4, QChar(QChar::Nbsp)));
        return true;
    }
    RichFormats::ChangeIndent(cursor, back ? -1 : 1);
    return true;
}

QString RichTextView::LinkAt(const QPoint& position) const
{
    const QString address = anchorAt(position);
    return IsAllowedLink(address) ? address : QString();
}

void RichTextView::mouseMoveEvent(QMouseEvent* event)
{
    QTextEdit::mouseMoveEvent(event);
    const bool hand = event->modifiers().testFlag(Qt::ControlModifier) && !LinkAt(event->pos()).isEmpty();
    viewport()->setCursor(hand ? Qt::PointingHandCursor : Qt::IBeamCursor);
}

void RichTextView::mouseReleaseEvent(QMouseEvent* event)
{
    QTextEdit::mouseReleaseEvent(event);
    const QString address = LinkAt(event->pos());
    if (event->button() == Qt::LeftButton && event->modifiers().testFlag(Qt::ControlModifier) &&
        !address.isEmpty())
        emit SigLinkActivated(address);
}

bool RichTextView::event(QEvent* event)
{
    if (event->type() == QEvent::ToolTip) {
        const auto* help = static_cast<QHelpEvent*>(event);
        const QString address = LinkAt(viewport()->mapFromGlobal(help->globalPos()));
        QToolTip::showText(help->globalPos(),
                           address.isEmpty()
                               ? QString()
                               : address.toHtmlEscaped() + QStringLiteral("<br>按住 Ctrl 单击打开"),
                           viewport());
        return true;
    }
    return QTextEdit::event(event);
}
