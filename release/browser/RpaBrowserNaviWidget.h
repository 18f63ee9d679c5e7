// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbBaseUI/WbBaseWidget.h>

// The narrow strip that stands for the browser pane while it is folded.
class RpaBrowserNaviWidget : public WbBaseWidget
{
    Q_OBJECT

public:
    explicit RpaBrowserNaviWidget(QWidget* parent = nullptr);

signals:
    void SigUnfoldBrowser();
};
