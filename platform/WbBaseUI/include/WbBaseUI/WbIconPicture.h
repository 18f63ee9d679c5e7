// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbBaseUI/WbBaseUIExport.h>
#include <WbBaseUI/WbTheme.h>

#include <QString>
#include <QWidget>

// A large icon that stands by itself, in the middle of an empty page for instance. Sharp on every screen; its
// colour follows the theme. GUI thread.
class WBBASEUI_EXPORT WbIconPicture : public QWidget
{
    Q_OBJECT

public:
    // iconName: of WbIcons; size in pixels at 100 %. As high as the icon, at least as wide.
    WbIconPicture(const QString& iconName, int size, WbColor color, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const QString name;
    const WbColor color;
};
