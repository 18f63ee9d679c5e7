// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbBaseUI/WbBaseUIExport.h>
#include <WbBaseUI/WbTheme.h>

#include <QIcon>
#include <QPixmap>
#include <QString>
#include <QStringList>

// The icon family of the product: line drawings in one colour, sharp at every size. An icon takes its colour
// from the theme each time it is painted, so it need not be set again when the theme changes:
//
//     button->setIcon(WbIcons::Get(QStringLiteral("save")));
//
// A disabled icon is painted in WbColor::TextDisabled, a selected or checked one in WbColor::AccentText
// unless its own colour is another than that of texts. GUI thread.
class WBBASEUI_EXPORT WbIcons
{
public:
    // The icon of that name, or a null icon for an unknown name.
    static QIcon Get(const QString& name, WbColor color = WbColor::TextSecondary);

    // A square picture of the icon; size in pixels of the screen at ratio 1. A null pixmap for an unknown
    // name.
    static QPixmap Pixmap(const QString& name, int size, WbColor color = WbColor::TextSecondary,
                          qreal ratio = 1.0);

    // All names, sorted.
    static QStringList Names();
};
