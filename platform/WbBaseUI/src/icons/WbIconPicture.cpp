// SPDX-License-Identifier: Apache-2.0

#include <OxBase/DpiTool.h>
#include <WbBaseUI/WbIconPicture.h>
#include <WbBaseUI/WbIcons.h>

#include <QPainter>

WbIconPicture::WbIconPicture(const QString& iconName, int size, WbColor iconColor, QWidget* parent)
    : QWidget(parent), name(iconName), color(iconColor)
{
    setFixedHeight(DpiTool::ScaleDefault(size));
    setMinimumWidth(height());
}

void WbIconPicture::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    WbIcons::Get(name, color).paint(&painter, rect());
}
