// SPDX-License-Identifier: Apache-2.0

#include "DialogTitleBar_p.h"

#include <OxBase/DpiTool.h>
#include <WbBaseUI/UIUtils.h>

#include <QHBoxLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOption>
#include <QToolButton>

namespace
{
constexpr int formTitleHeight = 48;
constexpr int smallTitleHeight = 40;
constexpr int formTitleLeft = 24;
constexpr int smallTitleLeft = 16;
constexpr int titleRight = 8;
constexpr int closeButtonSide = 32;
constexpr int closeIconSide = 16;
} // namespace

DialogTitleBar::DialogTitleBar(bool form, bool closable, QWidget* parent)
    : QWidget(parent), formTitle(form), labelTitle(new QLabel(this)),
      buttonClose(
          UIUtils::IconButton(QStringLiteral("dialogClose"), QStringLiteral("close"), QStringLiteral("关闭")))
{
    setObjectName(QStringLiteral("dialogTitleBar"));
    setProperty("formTitle", form);
    labelTitle->setObjectName(QStringLiteral("dialogTitle"));
    labelTitle->setTextFormat(Qt::PlainText);
    // Escape does the same; the Tab key goes through the form only.
    buttonClose->setFocusPolicy(Qt::NoFocus);

    auto* layout = new QHBoxLayout(this);
    layout->setSpacing(0);
    layout->addWidget(labelTitle, 1);
    layout->addWidget(buttonClose);
    buttonClose->setVisible(closable);
    AdjustForDpi();

    connect(buttonClose, &QToolButton::clicked, this, &DialogTitleBar::SigClose);
}

void DialogTitleBar::SetTitle(const QString& title)
{
    labelTitle->setText(title);
}

void DialogTitleBar::AdjustForDpi()
{
    setFixedHeight(DpiTool::ScaleDefault(formTitle ? formTitleHeight : smallTitleHeight));
    layout()->setContentsMargins(DpiTool::ScaleDefault(formTitle ? formTitleLeft : smallTitleLeft), 0,
                                 DpiTool::ScaleDefault(titleRight), 0);
    const int button = DpiTool::ScaleDefault(closeButtonSide);
    const int icon = DpiTool::ScaleDefault(closeIconSide);
    buttonClose->setFixedSize(button, button);
    buttonClose->setIconSize({icon, icon});
}

void DialogTitleBar::paintEvent(QPaintEvent*)
{
    QStyleOption option;
    option.initFrom(this);
    QPainter painter(this);
    style()->drawPrimitive(QStyle::PE_Widget, &option, &painter, this);
}

void DialogTitleBar::mousePressEvent(QMouseEvent* event)
{
    dragging = event->button() == Qt::LeftButton;
    grabbedAt = event->globalPos() - window()->pos();
}

void DialogTitleBar::mouseMoveEvent(QMouseEvent* event)
{
    if (dragging)
        window()->move(event->globalPos() - grabbedAt);
}
