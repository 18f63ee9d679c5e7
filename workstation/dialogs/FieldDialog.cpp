// SPDX-License-Identifier: Apache-2.0

#include "FieldDialog.h"

#include <WbBaseUI/WbScaledForm.h>

FieldDialog::FieldDialog(const QString& title, int leastHeight, QWidget* parent)
    : WbBaseDialog(parent, Qt::WindowCloseButtonHint, 1, true)
{
    ui.setupUi(GetContentWidget());
    GetContentWidget()->setMinimumHeight(leastHeight);
    WbScaledForm::Follow(GetContentWidget());
    SetTitle(title);
    ui.labelIntro->hide();
    ui.labelHint->hide();
    connect(ui.edit, &QLineEdit::textChanged, this, &FieldDialog::SlotEdited);
    connect(ui.edit, &QLineEdit::returnPressed, this, &FieldDialog::SlotConfirm);
    connect(ui.buttonOk, &QPushButton::clicked, this, &FieldDialog::SlotConfirm);
    connect(ui.buttonCancel, &QPushButton::clicked, this, &QDialog::reject);
    UpdateOk();
    ui.edit->setFocus();
}

void FieldDialog::SetField(const char* objectName, const QString& caption, const QString& accessibleName,
                           const QString& placeholder)
{
    ui.edit->setObjectName(QLatin1String(objectName));
    ui.edit->setAccessibleName(accessibleName);
    ui.edit->setPlaceholderText(placeholder);
    ui.labelCaption->setText(caption);
}

void FieldDialog::SetIntro(const char* objectName, const QString& text)
{
    ui.labelIntro->setObjectName(QLatin1String(objectName));
    ui.labelIntro->setText(text);
    ui.labelIntro->setVisible(!text.isEmpty());
}

void FieldDialog::SetHint(const char* objectName, const QString& text)
{
    ui.labelHint->setObjectName(QLatin1String(objectName));
    ui.labelHint->setText(text);
    ui.labelHint->setVisible(!text.isEmpty());
}

void FieldDialog::AllowEmpty()
{
    mayBeEmpty = true;
    UpdateOk();
}

QString FieldDialog::GetText() const
{
    return ui.edit->text().trimmed();
}

void FieldDialog::ShowProblem(const QString& problem)
{
    SetBusy(false);
    ui.labelProblem->setText(problem);
    ui.edit->setFocus();
}

void FieldDialog::SetBusy(bool isBusy)
{
    busy = isBusy;
    // Disabled it would hand the focus on to the button that cancels, and with it the key being pressed.
    ui.edit->setReadOnly(busy);
    UpdateOk();
}

void FieldDialog::SlotConfirm()
{
    if (!ui.buttonOk->isEnabled())
        return;
    const QString problem = FindProblem();
    if (!problem.isEmpty()) {
        ShowProblem(problem);
        return;
    }
    ui.labelProblem->clear();
    SetBusy(true);
    emit SigConfirmed();
}

void FieldDialog::SlotEdited()
{
    ui.labelProblem->clear();
    UpdateOk();
}
