// SPDX-License-Identifier: Apache-2.0

#include "MessageText_p.h"
#include "ToastWidget_p.h"

#include <OxBase/DpiTool.h>
#include <WbBaseUI/WbIcons.h>

#include <QAccessible>
#include <QGraphicsOpacityEffect>
#include <QHBoxLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QPropertyAnimation>

#include <chrono>

namespace
{
using namespace std::chrono_literals;

constexpr std::chrono::milliseconds shownFor = 3s;
constexpr std::chrono::milliseconds errorShownFor = 5s;
constexpr std::chrono::milliseconds fadeTime = 160ms;
constexpr int toastIconSize = 20;
constexpr int toastPadding = 12;
constexpr int toastPaddingAbove = 9; // one line of text fits into the head of the workstation
constexpr int widestToast = 480;
constexpr int longestToast = 300;
constexpr int mostToastLines = 6;

struct Look
{
    const char* icon;
    WbColor color;
};

Look LookOf(ENUM_TOAST_TYPE type)
{
    switch (type) {
    case ToastSuccess:
    case ToastDone:
        return {"success", WbColor::SuccessText};
    case ToastWarning:
        return {"warning", WbColor::WarningText};
    case ToastError:
        return {"error", WbColor::DangerText};
    case ToastInformation:
        break;
    }
    return {"info", WbColor::AccentText};
}
} // namespace

ToastWidget::ToastWidget(const QString& message, ENUM_TOAST_TYPE t, QWidget* parent)
    : QFrame(parent), text(message), type(t), labelIcon(new QLabel(this)),
      labelText(new QLabel(ShowableMessage(message, longestToast, mostToastLines), this)),
      opacity(new QGraphicsOpacityEffect(this)), fade(new QPropertyAnimation(opacity, "opacity", this))
{
    setObjectName(QStringLiteral("WbToast"));
    setAccessibleName(labelText->text());
    setFocusPolicy(Qt::NoFocus);
    setCursor(Qt::PointingHandCursor);
    setMouseTracking(true);
    labelIcon->setObjectName(QStringLiteral("labelToastIcon"));
    labelText->setObjectName(QStringLiteral("labelToastText"));
    labelText->setTextFormat(Qt::PlainText);
    labelText->setWordWrap(true);
    for (QLabel* label : {labelIcon, labelText})
        label->setAttribute(Qt::WA_TransparentForMouseEvents);
    PaintIcon();

    auto* layout = new QHBoxLayout(this);
    const int padding = DpiTool::ScaleDefault(toastPadding);
    const int above = DpiTool::ScaleDefault(toastPaddingAbove);
    layout->setContentsMargins(padding, above, padding + padding / 2, above);
    layout->setSpacing(padding * 2 / 3);
    layout->addWidget(labelIcon, 0, Qt::AlignTop);
    layout->addWidget(labelText, 1, Qt::AlignVCenter);

    setGraphicsEffect(opacity);
    opacity->setOpacity(0);
    fade->setDuration(int(fadeTime.count()));
    timer.setSingleShot(true);
    timer.setInterval(type == ToastError ? errorShownFor : shownFor);
    connect(&timer, &QTimer::timeout, this, &ToastWidget::FadeOut);
    connect(fade, &QPropertyAnimation::finished, this, [this] {
        if (leaving) {
            emit SigGone();
        } else {
            // Painting through an effect costs a copy of the widget each time; opaque it is not needed.
            opacity->setEnabled(false);
        }
    });
    connect(WbTheme::Instance(), &WbTheme::SigChanged, this, &ToastWidget::PaintIcon);
}

void ToastWidget::FadeIn()
{
    leaving = false;
    opacity->setEnabled(true);
    fade->stop();
    fade->setStartValue(opacity->opacity());
    fade->setEndValue(1.0);
    fade->start();
    timer.start();
    Announce();
}

void ToastWidget::FadeOut()
{
    if (leaving)
        return;
    leaving = true;
    timer.stop();
    opacity->setEnabled(true);
    fade->stop();
    fade->setStartValue(opacity->opacity());
    fade->setEndValue(0.0);
    fade->start();
}

void ToastWidget::FitInto(int width)
{
    ensurePolished();
    const QMargins margins = layout()->contentsMargins();
    const int chrome = margins.left() + margins.right() + layout()->spacing() +
                       labelIcon->sizeHint().width() + 2 * frameWidth();
    const QSize oneLine = labelText->fontMetrics().size(0, labelText->text());
    const int widest = qMin(width, DpiTool::ScaleDefault(widestToast));
    const int textWidth = qMax(1, qMin(oneLine.width() + 2, widest - chrome));
    const int textHeight = labelText->heightForWidth(textWidth);
    const int height = qMax(textHeight, labelIcon->sizeHint().height()) + margins.top() + margins.bottom();
    resize(textWidth + chrome, height + 2 * frameWidth());
}

void ToastWidget::SetMousePasses(bool passes)
{
    setAttribute(Qt::WA_TransparentForMouseEvents, passes);
    if (passes && !leaving && !timer.isActive())
        timer.start(); // nobody will tell when the mouse has gone
}

// A mouse that lies where the notice appears does not keep it; one that is moved over it does.
void ToastWidget::mouseMoveEvent(QMouseEvent* event)
{
    if (!mouseCame) {
        mouseCame = true;
        mouseCameAt = event->globalPos();
    } else if ((event->globalPos() - mouseCameAt).manhattanLength() > 2) {
        timer.stop();
    }
}

void ToastWidget::leaveEvent(QEvent* event)
{
    mouseCame = false;
    if (!leaving && !timer.isActive())
        timer.start();
    QFrame::leaveEvent(event);
}

void ToastWidget::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        FadeOut();
}

void ToastWidget::Announce()
{
    QAccessibleEvent event(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&event);
}

void ToastWidget::PaintIcon()
{
    const Look look = LookOf(type);
    labelIcon->setPixmap(WbIcons::Pixmap(QLatin1String(look.icon), DpiTool::ScaleDefault(toastIconSize),
                                         look.color, devicePixelRatioF()));
}
