#include "BrowserNotice_p.h"

#include <OxBase/DpiTool.h>
#include <WbBaseUI/WbIcons.h>
#include <WbBaseUI/WbPushButton.h>
#include <WbBaseUI/WbTheme.h>

#include <QLabel>
#include <QResizeEvent>
#include <QVBoxLayout>

namespace
{
constexpr int IconSize = 48;
constexpr int WidestText = 420;
constexpr int Margin = 16;

QLabel* AddLabel(QVBoxLayout* layout, const QString& name, const QString& role)
{
    auto* label = new QLabel;
    label->setObjectName(name);
    label->setProperty("wbRole", role);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setAlignment(Qt::AlignCenter);
    layout->addWidget(label, 0, Qt::AlignHCenter);
    return label;
}
} // namespace

BrowserNotice::BrowserNotice(QWidget* parent) : QWidget(parent), icon(new QLabel), retry(new WbPushButton)
{
    setObjectName(QStringLiteral("browserNotice"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(Margin, Margin, Margin, Margin);
    layout->setSpacing(10);
    layout->addStretch(2);
    layout->addWidget(icon, 0, Qt::AlignHCenter);
    title = AddLabel(layout, QStringLiteral("browserNoticeTitle"), QStringLiteral("heading"));
    text = AddLabel(layout, QStringLiteral("browserNoticeText"), QStringLiteral("secondary"));
    retry->setObjectName(QStringLiteral("browserRetry"));
    retry->setText(QStringLiteral("重试"));
    layout->addWidget(retry, 0, Qt::AlignHCenter);
    layout->addStretch(3);
    connect(retry, &WbPushButton::clicked, this, &BrowserNotice::SigRetry);
    connect(WbTheme::Instance(), &WbTheme::SigChanged, this, &BrowserNotice::ShowIcon);
    ShowStart();
}

void BrowserNotice::ShowStart()
{
    Show(QStringLiteral("browser"), QStringLiteral("内置浏览器"),
         QStringLiteral("流程在这里打开和操作网页。\n在上方输入网址打开要自动化的网页，再捕获其中的元素，"
                        "供流程点击、填写和读取。"));
    retry->hide();
}

void BrowserNotice::ShowProblem(const QString& caption, const QString& reason, bool mayRetry)
{
    Show(QStringLiteral("warning"), caption, reason);
    retry->setVisible(mayRetry);
}

void BrowserNotice::Show(const QString& iconShown, const QString& caption, const QString& reason)
{
    iconName = iconShown;
    title->setText(caption);
    text->setText(reason);
    ShowIcon();
}

void BrowserNotice::ShowIcon()
{
    icon->setPixmap(WbIcons::Pixmap(iconName, DpiTool::ScaleDefault(IconSize), WbColor::TextSecondary,
                                    devicePixelRatioF()));
}

void BrowserNotice::resizeEvent(QResizeEvent* event)
{
    // A wrapped label in a centred column has no width of its own.
    const int width = qMin(event->size().width() - 2 * Margin, DpiTool::ScaleDefault(WidestText));
    title->setFixedWidth(qMax(0, width));
    text->setFixedWidth(qMax(0, width));
    QWidget::resizeEvent(event);
}
