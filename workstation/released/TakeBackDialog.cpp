// SPDX-License-Identifier: Apache-2.0

#include "TakeBackDialog.h"

#include <OxBase/DpiTool.h>
#include <WbBaseUI/BaseUIBusiness.h>
#include <WbBaseUI/WbLabel.h>
#include <WbBaseUI/WbLineEdit.h>
#include <WbBaseUI/WbPushButton.h>

#include <QBoxLayout>

namespace
{
constexpr int longestReason = 200;
}

TakeBackDialog::TakeBackDialog(const QString& title, const QString& act, const QString& consequence,
                               QWidget* parent)
    : WbBaseDialog(parent, Qt::WindowCloseButtonHint, 1, true), editReason(new WbLineEdit(this)),
      labelProblem(new WbLabel(this)), buttonOk(new WbPushButton(this, Wb::PrimaryButton))
{
    setObjectName(QStringLiteral("TakeBackDialog"));
    SetTitle(title);

    auto* text = new WbLabel(consequence, this);
    text->setObjectName(QStringLiteral("labelConsequence"));
    text->setTextFormat(Qt::PlainText); // it holds foreign names
    text->setWordWrap(true);
    auto* caption = new WbLabel(QStringLiteral("原因（必填，会记入操作记录）"), this);
    caption->setBuddy(editReason);
    editReason->setObjectName(QStringLiteral("editReason"));
    editReason->setAccessibleName(QStringLiteral("原因"));
    editReason->setPlaceholderText(QStringLiteral("例如：金额计算有误，修正后再上线"));
    editReason->setMaxLength(longestReason);
    labelProblem->setObjectName(QStringLiteral("labelProblem"));
    labelProblem->setTextFormat(Qt::PlainText);
    labelProblem->setWordWrap(true);
    buttonOk->setObjectName(QStringLiteral("buttonOk"));
    buttonOk->setText(act);
    buttonOk->setDefault(true);
    auto* buttonCancel = new WbPushButton(this, Wb::SecondaryButton);
    buttonCancel->setObjectName(QStringLiteral("buttonCancel"));
    buttonCancel->setText(QStringLiteral("取消"));
    buttonCancel->setAutoDefault(false);

    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(12);
    buttons->addStretch();
    buttons->addWidget(buttonOk);
    buttons->addWidget(buttonCancel);
    auto* layout = new QVBoxLayout(GetContentWidget());
    layout->setContentsMargins(24, 20, 24, 24);
    layout->setSpacing(12);
    layout->addWidget(text);
    layout->addWidget(caption);
    layout->addWidget(editReason);
    layout->addWidget(labelProblem);
    layout->addStretch();
    layout->addLayout(buttons);
    GetContentWidget()->setMinimumSize(DpiTool::ScaleDefault(460), DpiTool::ScaleDefault(250));

    connect(editReason, &QLineEdit::textChanged, this, &TakeBackDialog::SlotReasonEdited);
    connect(editReason, &QLineEdit::returnPressed, this, &TakeBackDialog::SlotConfirm);
    connect(buttonOk, &QPushButton::clicked, this, &TakeBackDialog::SlotConfirm);
    connect(buttonCancel, &QPushButton::clicked, this, &QDialog::reject);
    SlotReasonEdited();
    editReason->setFocus();
}

TakeBackDialog::~TakeBackDialog() = default;

QString TakeBackDialog::GetReason() const
{
    return editReason->text().trimmed();
}

void TakeBackDialog::SetBusy(bool isBusy)
{
    busy = isBusy;
    // Disabled it would hand the focus on to the button that cancels, and with it the key being pressed.
    editReason->setReadOnly(busy);
    buttonOk->setEnabled(!busy && !GetReason().isEmpty());
}

void TakeBackDialog::ShowProblem(const QString& problem)
{
    SetBusy(false);
    labelProblem->setText(problem);
    editReason->setFocus();
}

void TakeBackDialog::SlotConfirm()
{
    if (buttonOk->isEnabled()) {
        labelProblem->clear();
        SetBusy(true);
        emit SigConfirmed();
    }
}

void TakeBackDialog::SlotReasonEdited()
{
    labelProblem->clear();
    buttonOk->setEnabled(!busy && !GetReason().isEmpty());
}
