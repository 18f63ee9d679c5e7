// SPDX-License-Identifier: Apache-2.0

#include "TipBar.h"

#include "ui_TipBar.h"

#include <WbBaseUI/WbScaledForm.h>

TipBar::TipBar(QWidget* parent) : QFrame(parent)
{
    Ui::TipBar ui;
    ui.setupUi(this);
    WbScaledForm::Follow(this);
    text = ui.labelTip;
    hide();
    connect(ui.buttonTipDone, &QPushButton::clicked, this, &TipBar::SigDone);
    connect(ui.buttonTipsOff, &QPushButton::clicked, this, &TipBar::SigNoMore);
}

void TipBar::Tell(const QString& tip)
{
    text->setText(tip);
    setVisible(!tip.isEmpty());
}
