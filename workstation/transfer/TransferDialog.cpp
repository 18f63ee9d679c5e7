// SPDX-License-Identifier: Apache-2.0

#include "TransferDialog.h"

#include <WbBaseUI/WbScaledForm.h>

TransferDialog::TransferDialog(const QString& text, QWidget* parent)
    : WbBaseDialog(parent, Qt::WindowCloseButtonHint, 1, true)
{
    ui.setupUi(GetContentWidget());
    WbScaledForm::Follow(GetContentWidget());
    setObjectName(QStringLiteral("TransferDialog"));
    SetTitle(QStringLiteral("请稍候"));
    ui.labelCaption->setText(text);
    connect(ui.buttonCancel, &QPushButton::clicked, this, &QDialog::reject);
}

void TransferDialog::ShowProgress(int done, int total)
{
    ui.progressTransfer->setRange(0, total);
    ui.progressTransfer->setValue(done);
    ui.labelCount->setText(QStringLiteral("%1 / %2 个版本").arg(done).arg(total));
}
