// SPDX-License-Identifier: Apache-2.0

#include <WbBaseUI/WbBaseWidget.h>

#include <QPainter>
#include <QStyle>
#include <QStyleOption>

WbBaseWidget::WbBaseWidget(QWidget* parent, Qt::WindowFlags flags) : QWidget(parent, flags) {}

void WbBaseWidget::paintEvent(QPaintEvent*)
{
    QStyleOption option;
    option.initFrom(this);
    QPainter painter(this);
    style()->drawPrimitive(QStyle::PE_Widget, &option, &painter, this);
}
