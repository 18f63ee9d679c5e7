// SPDX-License-Identifier: Apache-2.0

#include "RunNotice.h"

#include <WbBaseUI/WbScaledForm.h>
#include <WbBaseUI/WbTheme.h>

RunNotice::RunNotice(QWidget* parent) : QFrame(parent)
{
    ui.setupUi(this);
    WbScaledForm::Follow(this);
    ui.textRunDetails->setFont(WbTheme::CodeFont());
    hide();
    connect(ui.buttonRunAgain, &QPushButton::clicked, this, &RunNotice::SigAgain);
    connect(ui.buttonRunDetails, &QPushButton::toggled, ui.textRunDetails, &QWidget::setVisible);
    connect(ui.buttonRunReport, &QPushButton::clicked, this, &RunNotice::SigReport);
}

void RunNotice::Tell(const QString& problem, const QString& againText, const QString& technical)
{
    ui.labelRunProblem->setText(problem);
    ui.buttonRunAgain->setText(againText);
    ui.textRunDetails->setPlainText(technical);
    ui.buttonRunDetails->setChecked(false);
    ui.textRunDetails->hide();
    ui.buttonRunDetails->setVisible(!technical.isEmpty());
    show();
}
