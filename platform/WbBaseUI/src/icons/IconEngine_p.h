// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbBaseUI/WbTheme.h>

#include <QIconEngine>

// Paints an icon of the family in the theme's colours of the moment.
class IconEngine : public QIconEngine
{
public:
    IconEngine(const QString& iconName, WbColor normal) : name(iconName), color(normal) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override;
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override;
    QIconEngine* clone() const override { return std::make_unique<IconEngine>(name, color).release(); }
    QString key() const override;

private:
    QString name;
    WbColor color;
};
