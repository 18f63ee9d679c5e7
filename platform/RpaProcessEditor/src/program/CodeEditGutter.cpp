// SPDX-License-Identifier: Apache-2.0

// The strip beside the text: breakpoints and line numbers.
#include "CodeEdit_p.h"

#include <WbBaseUI/UIUtils.h>
#include <WbBaseUI/WbTheme.h>

#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QTextBlock>
#include <QTextLayout>

// The strip with breakpoints, where a click sets one, and line numbers, where it selects the line.
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

    void mousePressEvent(QMouseEvent* event) override { edit->PressGutter(*event); }

    bool event(QEvent* event) override
    {
        if (event->type() != QEvent::ToolTip)
            return QWidget::event(event);
        const QPoint position = static_cast<QHelpEvent*>(event)->pos();
        const int line = edit->cursorForPosition(QPoint(0, position.y())).blockNumber() + 1;
        setToolTip(UIUtils::PlainToolTip(edit->breakpoints.value(line).text));
        return QWidget::event(event);
    }

private:
    CodeEdit* edit;
};

QWidget* CodeEdit::MakeGutter()
{
    return new CodeGutter(this);
}

int CodeEdit::GutterWidth() const
{
    const QFontMetrics metrics(document()->defaultFont());
    return metrics.horizontalAdvance(QLatin1Char('9')) * qMax(3, QString::number(blockCount()).size()) + 20 +
           MarkWidth();
}

void CodeEdit::LayoutGutter()
{
    setViewportMargins(GutterWidth(), 0, 0, 0);
    const QRect contents = contentsRect();
    gutter->setGeometry(contents.left(), contents.top(), GutterWidth(), contents.height());
    gutter->update();
}

void CodeEdit::PaintGutter(QPaintEvent* event)
{
    QPainter painter(gutter);
    painter.fillRect(event->rect(), WbTheme::Instance()->Color(WbColor::Surface));
    painter.setFont(document()->defaultFont());
    const int current = textCursor().blockNumber();
    QTextBlock block = firstVisibleBlock();
    qreal top = blockBoundingGeometry(block).translated(contentOffset()).top();
    while (block.isValid() && top <= event->rect().bottom()) {
        if (!block.isVisible()) {
            block = block.next();
            continue;
        }
        const qreal height = blockBoundingRect(block).height();
        const bool here = block.blockNumber() == current;
        const bool failed = block.blockNumber() == failedLine - 1;
        painter.setPen(WbTheme::Instance()->Color(failed ? WbColor::DangerText
                                                  : here ? WbColor::Text
                                                         : WbColor::TextDisabled));
        // Chinese text comes from a taller font: the number stands on the line's own base line.
        const QTextLayout* text = block.layout();
        const qreal lower =
            text->lineCount() > 0 ? text->lineAt(0).ascent() - painter.fontMetrics().ascent() : 0.0;
        painter.drawText(QRectF(0, top + qMax(0.0, lower), gutter->width() - 10, height),
                         Qt::AlignRight | Qt::AlignTop, QString::number(block.blockNumber() + 1));
        PaintMark(painter, block.blockNumber() + 1, top, height);
        top += height;
        block = block.next();
    }
}

int CodeEdit::MarkWidth() const
{
    return QFontMetrics(document()->defaultFont()).height() + 2;
}

void CodeEdit::PaintMark(QPainter& painter, int line, qreal top, qreal height) const
{
    const qreal size = qMin<qreal>(height, MarkWidth()) - 4;
    const QRectF area(4, top + (height - size) / 2, size, size);
    breakpoints.value(line).Paint(painter, area);
    if (line == stoppedLine)
        BreakpointMark::PaintArrow(painter, area, stoppedInnermost);
}

void CodeEdit::PressGutter(const QMouseEvent& event)
{
    QTextCursor cursor = cursorForPosition(QPoint(0, event.pos().y()));
    const bool marks = event.pos().x() < MarkWidth() + 4 || event.button() == Qt::RightButton;
    if (marks) {
        emit SigMarkPressed(cursor.blockNumber() + 1, event.button(), event.globalPos());
        return;
    }
    cursor.select(QTextCursor::LineUnderCursor);
    setTextCursor(cursor);
    setFocus();
}

#include "CodeEditGutter.moc"
