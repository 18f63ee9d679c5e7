#include "RpaBrowserNaviWidget.h"

#include "ui_RpaBrowserNaviWidget.h"

RpaBrowserNaviWidget::RpaBrowserNaviWidget(QWidget* parent) : WbBaseWidget(parent)
{
    Ui::RpaBrowserNaviWidget ui;
    ui.setupUi(this);
    ui.labelCaption->setContentsMargins(10, 10, 12, 10);
    connect(ui.pushButtonUnfold, &WbPushButton::clicked, this, &RpaBrowserNaviWidget::SigUnfoldBrowser);
}
