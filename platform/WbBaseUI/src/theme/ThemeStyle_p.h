// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QProxyStyle>

// What a style sheet cannot say: the sizes and looks of icons and the spacings of layouts at the scale of the
// screen.
class ThemeStyle : public QProxyStyle
{
    Q_OBJECT

public:
    ThemeStyle();

    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override;
    QIcon standardIcon(StandardPixmap icon, const QStyleOption* option, const QWidget* widget) const override;
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* returnData) const override;
};
