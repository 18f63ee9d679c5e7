// SPDX-License-Identifier: Apache-2.0

#include "RpaRunDialog_p.h"

#include <WbBaseUI/UIMain.h>
#include <WbBaseUI/WbScaledForm.h>

namespace
{

// A text of a program may be of any length; a dialog may not.
constexpr int textLength = 2000;

} // namespace

RpaRunDialog::RpaRunDialog(Kind shownKind, const QString& text, const QString& value)
    : WbBaseDialog(UIMain::Instance()->GetMainWidget(nullptr)), kind(shownKind)
{
    setObjectName(QStringLiteral("RpaRunDialog"));
    SetTitle(QStringLiteral("流程消息"));
    ui.setupUi(GetContentWidget());
    WbScaledForm::Follow(GetContentWidget());
    ui.labelRunText->setText(text.left(textLength));
    ui.lineEditRunInput->setText(value);
    ui.lineEditRunInput->setAccessibleName(text.left(100));
    ui.lineEditRunInput->setVisible(kind == Input);
    ui.pushButtonRunNo->setVisible(kind != Message);
    if (kind == Confirm) {
        ui.pushButtonRunYes->setText(QStringLiteral("是"));
        ui.pushButtonRunNo->setText(QStringLiteral("否"));
    }
    connect(ui.pushButtonRunYes, &QPushButton::clicked, this, &QDialog::accept);
    connect(ui.pushButtonRunNo, &QPushButton::clicked, this, &QDialog::reject);
    if (kind == Input)
        ui.lineEditRunInput->setFocus();
    else
        ui.pushButtonRunYes->setFocus();
}

QVariant RpaRunDialog::GetAnswer() const
{
    if (kind == Confirm)
        return result() == QDialog::Accepted;
    if (kind == Input && result() == QDialog::Accepted)
        return ui.lineEditRunInput->text();
    return {};
}
