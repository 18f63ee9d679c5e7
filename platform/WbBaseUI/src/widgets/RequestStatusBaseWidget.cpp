// SPDX-License-Identifier: Apache-2.0

#include "BusySpinner_p.h"
#include "MessageText_p.h"

#include <OxBase/DpiTool.h>
#include <OxBase/IDpiAdapter.h>
#include <WbBaseUI/RequestStatusBaseWidget.h>
#include <WbBaseUI/WbIcons.h>
#include <WbBaseUI/WbPushButton.h>

#include <QAccessible>
#include <QApplication>
#include <QLabel>
#include <QPointer>
#include <QVBoxLayout>
#include <QVector>

namespace
{
constexpr int errorIconSize = 48;
constexpr int statusSpacing = 16;
constexpr int statusSideMargin = 32;
constexpr int longestReason = 600;
constexpr int mostReasonLines = 10;

QLabel* MakeLabel(const QString& name, QWidget* parent)
{
    auto* label = new QLabel(parent);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    label->setAlignment(Qt::AlignCenter);
    return label;
}
} // namespace

class RequestStatusBaseWidget::Private : public IDpiAdapter
{
public:
    explicit Private(RequestStatusBaseWidget* widget)
        : q(widget), spinner(new BusySpinner(widget)),
          labelIcon(MakeLabel(QStringLiteral("statusIcon"), widget)),
          labelTitle(MakeLabel(QStringLiteral("statusTitle"), widget)),
          labelReason(MakeLabel(QStringLiteral("statusReason"), widget)),
          buttonRefresh(new WbPushButton(widget, Wb::PrimaryButton)), column(new QVBoxLayout(widget))
    {
        spinner->setObjectName(QStringLiteral("statusSpinner"));
        labelReason->setWordWrap(true);
        buttonRefresh->setObjectName(QStringLiteral("pushButtonRefresh"));
        buttonRefresh->setText(QStringLiteral("刷新"));
        column->addStretch(2);
        column->addWidget(spinner, 0, Qt::AlignHCenter);
        column->addWidget(labelIcon);
        column->addWidget(labelTitle);
        // It wraps, so it gets the whole width; aligned to the middle it would be cut after its first line.
        column->addWidget(labelReason);
        column->addWidget(buttonRefresh, 0, Qt::AlignHCenter);
        column->addStretch(3);
        AdjustForDpi();
        DpiTool::Register(this);
    }

    ~Private() override { DpiTool::Unregister(this); }

    void AdjustForDpi() override
    {
        column->setSpacing(DpiTool::ScaleDefault(statusSpacing));
        const int margin = DpiTool::ScaleDefault(statusSideMargin);
        column->setContentsMargins(margin, 0, margin, 0);
        PaintIcon();
    }

    void PaintIcon()
    {
        labelIcon->setPixmap(WbIcons::Pixmap(QStringLiteral("error"), DpiTool::ScaleDefault(errorIconSize),
                                             WbColor::DangerText, q->devicePixelRatioF()));
    }

    void ShowParts()
    {
        const bool failed = status == RequestStatus::Failed;
        const QString title = failed ? QStringLiteral("加载失败") : QStringLiteral("正在加载…");
        spinner->setVisible(!failed);
        labelIcon->setVisible(failed);
        labelTitle->setText(title);
        labelReason->setText(reason);
        labelReason->setVisible(failed && !reason.isEmpty());
        buttonRefresh->setVisible(failed);
        q->setAccessibleName(title);
        q->setAccessibleDescription(failed ? reason : QString());
        // Assistive programs read an alert aloud although the focus is elsewhere.
        QAccessibleEvent event(q, failed ? QAccessible::Alert : QAccessible::NameChanged);
        QAccessible::updateAccessibility(&event);
    }

    void ShowSucceedWidgets(bool visible)
    {
        for (const QPointer<QWidget>& widget : succeedWidgets)
            if (widget)
                widget->setVisible(visible);
    }

    // Hiding the widget with the focus would hand it to whatever comes next in the window, and keys typed
    // meanwhile would go there. It waits here instead, and the author goes on typing where he was.
    void TakeFocus()
    {
        QWidget* focus = QApplication::focusWidget();
        for (const QPointer<QWidget>& widget : succeedWidgets) {
            if (widget && focus && widget->isAncestorOf(focus)) {
                focusBefore = focus;
                q->setFocus();
            }
        }
    }

    // Return refreshes, unless the author has gone to work somewhere else meanwhile.
    void OfferRefresh()
    {
        const QWidget* focus = QApplication::focusWidget();
        if (focusBefore || !focus || q->isAncestorOf(focus))
            buttonRefresh->setFocus();
    }

    void RestoreFocus()
    {
        QWidget* focus = QApplication::focusWidget();
        if (focusBefore && (!focus || focus == q || q->isAncestorOf(focus)))
            focusBefore->setFocus();
        focusBefore.clear();
    }

    RequestStatusBaseWidget* const q;
    BusySpinner* const spinner;
    QLabel* const labelIcon;
    QLabel* const labelTitle;
    QLabel* const labelReason;
    WbPushButton* const buttonRefresh;
    QVBoxLayout* const column;
    QVector<QPointer<QWidget>> succeedWidgets;
    QPointer<QWidget> focusBefore;
    RequestStatus status = RequestStatus::Succeeded;
    QString reason;
};

RequestStatusBaseWidget::RequestStatusBaseWidget(QWidget* parent)
    : QWidget(parent), d(std::make_unique<Private>(this))
{
    setAttribute(Qt::WA_StyledBackground);
    hide();
    connect(d->buttonRefresh, &QPushButton::clicked, this, &RequestStatusBaseWidget::SigRefresh);
    connect(WbTheme::Instance(), &WbTheme::SigChanged, this, [this] { d->PaintIcon(); });
}

RequestStatusBaseWidget::~RequestStatusBaseWidget() = default;

void RequestStatusBaseWidget::AddSucceedWidget(QWidget* widget)
{
    if (widget)
        d->succeedWidgets.append(widget);
}

RequestStatus RequestStatusBaseWidget::GetStatus() const
{
    return d->status;
}

void RequestStatusBaseWidget::SetStatus(RequestStatus status)
{
    d->status = status;
    const bool succeeded = status == RequestStatus::Succeeded;
    if (succeeded) {
        d->ShowSucceedWidgets(true);
        d->RestoreFocus();
        hide();
        return;
    }
    d->ShowParts();
    show();
    d->TakeFocus();
    d->ShowSucceedWidgets(false);
    if (status == RequestStatus::Failed)
        d->OfferRefresh();
}

void RequestStatusBaseWidget::SetErrorMsg(const QString& message)
{
    d->reason = ShowableMessage(message, longestReason, mostReasonLines);
    if (d->status == RequestStatus::Failed)
        d->ShowParts();
}
