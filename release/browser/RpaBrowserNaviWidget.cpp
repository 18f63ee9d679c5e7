// SPDX-License-Identifier: Apache-2.0

#include "RpaBrowserNaviWidget.h"

#include "ui_RpaBrowserNaviWidget.h"

RpaBrowserNaviWidget::RpaBrowserNaviWidget(QWidget* parent) : WbBaseWidget(parent)
{
    Ui::RpaBrowserNaviWidget ui;
    ui.setupUi(this);
    ui.labelCaption->setContentsMargins(10, 10, 12, 10);
    // What the margins leave of the strip's width is the width of one character.
    ui.labelCaption->setStyleSheet(QStringLiteral("font-size: 12px"));
    connect(ui.pushButtonUnfold, &WbPushButton::clicked, this, &RpaBrowserNaviWidget::SigUnfoldBrowser);
}
