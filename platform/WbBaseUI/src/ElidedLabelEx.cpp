#include <WbBaseUI/ElidedLabelEx.h>

#include <QFontMetrics>
#include <QPainter>
#include <QResizeEvent>
#include <QStyle>
#include <QStyleOption>

namespace
{
constexpr int kGapBetweenTexts = 8;
// Wide enough for the ellipsis and a character before it, so that a squeezed label still shows that it has a
// text.
constexpr int kMinimumCharacters = 2;

int SecondTextWidth(const QFontMetrics& metrics, const QString& second)
{
    return second.isEmpty() ? 0 : metrics.horizontalAdvance(second) + kGapBetweenTexts;
}
} // namespace

ElidedLabelEx::ElidedLabelEx(QWidget* parent) : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
}

ElidedLabelEx::~ElidedLabelEx() = default;

void ElidedLabelEx::SetText(const QString& text, const QString& second)
{
    firstText = text;
    secondText = second;
    // QLabel keeps the text too: it is what assistive programs and QLabel::text() read.
    setText(second.isEmpty() ? text : text + QLatin1Char(' ') + second);
    updateGeometry();
    UpdateToolTip();
    update();
}

QString ElidedLabelEx::GetText() const
{
    return firstText;
}

QString ElidedLabelEx::GetSecondText() const
{
    return secondText;
}

QSize ElidedLabelEx::sizeHint() const
{
    const QFontMetrics metrics = fontMetrics();
    const QMargins margins = contentsMargins();
    const int width = metrics.horizontalAdvance(firstText) + SecondTextWidth(metrics, secondText);
    return {width + margins.left() + margins.right() + 1,
            metrics.height() + margins.top() + margins.bottom()};
}

QSize ElidedLabelEx::minimumSizeHint() const
{
    const QFontMetrics metrics = fontMetrics();
    const int narrow = kMinimumCharacters * metrics.averageCharWidth() +
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
    const QPalette::ColorRole role = foregroundRole();
    if (secondWidth > 0) {
        style()->drawItemText(&painter, area, Qt::AlignRight | Qt::AlignVCenter, palette(), isEnabled(),
                              secondText, role);
        area.setRight(area.right() - secondWidth);
    }
    const QString shown = fontMetrics().elidedText(firstText, Qt::ElideRight, area.width());
    style()->drawItemText(&painter, area, int(alignment()) | Qt::TextSingleLine, palette(), isEnabled(),
                          shown, role);
}

void ElidedLabelEx::resizeEvent(QResizeEvent* event)
{
    QLabel::resizeEvent(event);
    UpdateToolTip();
}

void ElidedLabelEx::UpdateToolTip()
{
    const int room = contentsRect().width() - SecondTextWidth(fontMetrics(), secondText);
    const bool elided = fontMetrics().horizontalAdvance(firstText) > room;
    setToolTip(elided ? firstText : QString());
}
