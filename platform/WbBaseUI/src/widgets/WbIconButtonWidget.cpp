// SPDX-License-Identifier: Apache-2.0

#include "StyleRefresh_p.h"
#include "WidgetAccessibility_p.h"

#include <WbBaseUI/WbIconButtonWidget.h>

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOption>

WbIconButtonWidget::WbIconButtonWidget(QWidget* parent) : QWidget(parent), labelText(new QLabel(this))
{
    InstallWidgetAccessibility();
    labelText->setObjectName(QStringLiteral("labelText"));
    labelText->setTextFormat(Qt::PlainText);
    labelText->setAlignment(Qt::AlignCenter);
    labelText->setAttribute(Qt::WA_TransparentForMouseEvents);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(labelText);
    setFocusPolicy(Qt::TabFocus);
    setCursor(Qt::PointingHandCursor);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
}

void WbIconButtonWidget::UpdateStyle()
{
    RefreshStyle(this);
    RefreshStyle(labelText);
}

void WbIconButtonWidget::paintEvent(QPaintEvent*)
{
    QStyleOption option;
    option.initFrom(this);
    QPainter painter(this);
    style()->drawPrimitive(QStyle::PE_Widget, &option, &painter, this);
}

void WbIconButtonWidget::mousePressEvent(QMouseEvent* event)
{
    pressed = event->button() == Qt::LeftButton;
    event->setAccepted(pressed);
}

void WbIconButtonWidget::mouseReleaseEvent(QMouseEvent* event)
{
    const bool clicked = pressed && event->button() == Qt::LeftButton && rect().contains(event->pos());
    pressed = false;
    if (clicked)
        emit SigClicked();
}

void WbIconButtonWidget::keyPressEvent(QKeyEvent* event)
{
    const int key = event->key();
    if (!event->isAutoRepeat() && (key == Qt::Key_Space || key == Qt::Key_Return || key == Qt::Key_Enter)) {
        emit SigClicked();
        return;
    }
    QWidget::keyPressEvent(event);
}
