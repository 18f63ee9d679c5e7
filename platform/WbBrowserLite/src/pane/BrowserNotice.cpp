// SPDX-License-Identifier: Apache-2.0

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
constexpr int noticeIconSize = 48;
constexpr int widestNotice = 420;
constexpr int noticeMargin = 16;

QLabel* AddLabel(QVBoxLayout* layout, const QString& name, const QString& role)
{
    auto* label = new QLabel;
    label->setObjectName(name);
    label->setProperty("wbRole", role);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setAlignment(Qt::AlignCenter);
    layout->addWidget(label);
    return label;
}
} // namespace

BrowserNotice::BrowserNotice(QWidget* parent) : QWidget(parent), icon(new QLabel), retry(new WbPushButton)
{
    setObjectName(QStringLiteral("browserNotice"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(noticeMargin, noticeMargin, noticeMargin, noticeMargin);
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

void BrowserNotice::SetForAuthor(bool author)
{
    forAuthor = author;
    if (startShown)
        ShowStart();
}

void BrowserNotice::ShowStart()
{
    QString purpose = QStringLiteral("流程在这里打开和操作网页。");
    if (forAuthor)
        purpose += QStringLiteral("\n在上方输入网址打开要自动化的网页，再捕获其中的元素，"
                                  "供流程点击、填写和读取。");
    startShown = true;
    Show(QStringLiteral("browser"), QStringLiteral("内置浏览器"), purpose);
    retry->hide();
}

void BrowserNotice::ShowProblem(const QString& caption, const QString& reason, bool mayRetry)
{
    startShown = false;
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
    icon->setPixmap(WbIcons::Pixmap(iconName, DpiTool::ScaleDefault(noticeIconSize), WbColor::TextSecondary,
                                    devicePixelRatioF()));
}

void BrowserNotice::resizeEvent(QResizeEvent* event)
{
    // Labels that fill the column are asked for the height of just the width they get.
    const int side = (event->size().width() - DpiTool::ScaleDefault(widestNotice)) / 2;
    layout()->setContentsMargins(qMax(noticeMargin, side), noticeMargin, qMax(noticeMargin, side),
                                 noticeMargin);
    QWidget::resizeEvent(event);
}
