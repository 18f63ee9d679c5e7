// SPDX-License-Identifier: Apache-2.0

#include <WbBaseUI/ElidedLabelEx.h>
#include <WbBaseUI/UIUtils.h>

#include <QFontMetrics>
#include <QPainter>
#include <QResizeEvent>
#include <QStyle>
#include <QStyleOption>

namespace
{
constexpr int gapBetweenTexts = 8;
// Wide enough for the ellipsis and what tells one text from another before it.
constexpr int leastCharacters = 4;
constexpr QChar wideCharacter(0x56fd);

int SecondTextWidth(const QFontMetrics& metrics, const QString& second)
{
    return second.isEmpty() ? 0 : metrics.horizontalAdvance(second) + gapBetweenTexts;
}
} // namespace

ElidedLabelEx::ElidedLabelEx(QWidget* parent) : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
}

void ElidedLabelEx::SetText(const QString& text, const QString& second)
{
    firstText = text;
    secondText = second;
    ForgetMeasures();
    // QLabel keeps the text too: it is what assistive programs and QLabel::text() read.
    setText(second.isEmpty() ? text : text + QLatin1Char(' ') + second);
    updateGeometry();
    UpdateToolTip();
    update();
}

QSize ElidedLabelEx::sizeHint() const
{
    const QFontMetrics metrics = fontMetrics();
    const QMargins margins = contentsMargins();
    const int width = FirstTextWidth() + SecondTextWidth(metrics, secondText);
    return {width + margins.left() + margins.right() + 1,
            metrics.height() + margins.top() + margins.bottom()};
}

QSize ElidedLabelEx::minimumSizeHint() const
{
    const QFontMetrics metrics = fontMetrics();
    const int narrow = leastCharacters * metrics.horizontalAdvance(wideCharacter) +
                       metrics.horizontalAdvance(QChar(0x2026)) + SecondTextWidth(metrics, secondText);
    const QSize wanted = sizeHint();
    return {qMin(wanted.width(), narrow), wanted.height()};
}

void ElidedLabelEx::paintEvent(QPaintEvent*)
{
    QStyleOption option;
    option.initFrom(this);
    QPainter painter(this);
    style()->drawPrimitive(QStyle::PE_Widget, &option, &painter, this);

    QRect area = contentsRect();
    const int secondWidth = SecondTextWidth(fontMetrics(), secondText);
    painter.setPen(option.palette.color(foregroundRole()));
    if (secondWidth > 0) {
        painter.drawText(area, Qt::AlignRight | Qt::AlignVCenter, secondText);
        area.setRight(area.right() - secondWidth);
    }
    LayOut(area.width());
    const QRect place = QStyle::alignedRect(layoutDirection(), alignment(),
                                            laidOut.size().toSize().boundedTo(area.size()), area);
    painter.setClipRect(area);
    painter.drawStaticText(place.topLeft(), laidOut);
}

int ElidedLabelEx::FirstTextWidth() const
{
    if (firstTextWidth < 0)
        firstTextWidth = fontMetrics().horizontalAdvance(firstText);
    return firstTextWidth;
}

void ElidedLabelEx::ForgetMeasures()
{
    firstTextWidth = -1;
    laidOutRoom = -1;
}

// Eliding and shaping cost several times what drawing does, and lists repaint their labels often.
void ElidedLabelEx::LayOut(int room)
{
    if (room == laidOutRoom)
        return;
    laidOutRoom = room;
    QString line = firstText;
    line.replace(QLatin1Char('\n'), QLatin1Char(' '));
    laidOut.setTextFormat(Qt::PlainText);
    laidOut.setText(fontMetrics().elidedText(line, Qt::ElideRight, room));
    laidOut.prepare({}, font());
}

void ElidedLabelEx::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        ForgetMeasures();
    QLabel::changeEvent(event);
}

void ElidedLabelEx::resizeEvent(QResizeEvent* event)
{
    QLabel::resizeEvent(event);
    UpdateToolTip();
}

void ElidedLabelEx::UpdateToolTip()
{
    const int room = contentsRect().width() - SecondTextWidth(fontMetrics(), secondText);
    const QString tip = FirstTextWidth() > room ? UIUtils::PlainToolTip(firstText) : QString();
    if (tip != toolTip())
        setToolTip(tip);
}
