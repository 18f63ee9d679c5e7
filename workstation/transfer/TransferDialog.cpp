// SPDX-License-Identifier: Apache-2.0

#include "TransferDialog.h"

#include <OxBase/DpiTool.h>
#include <WbBaseUI/BaseUIBusiness.h>
#include <WbBaseUI/WbLabel.h>
#include <WbBaseUI/WbPushButton.h>

#include <QBoxLayout>
#include <QProgressBar>

TransferDialog::TransferDialog(const QString& text, QWidget* parent)
    : WbBaseDialog(parent, Qt::WindowCloseButtonHint, 1, true), labelCount(new WbLabel(this)),
      bar(new QProgressBar(this))
{
    setObjectName(QStringLiteral("TransferDialog"));
    SetTitle(QStringLiteral("请稍候"));
    auto* caption = new WbLabel(text, this);
    caption->setTextFormat(Qt::PlainText); // it holds foreign names
    caption->setWordWrap(true);
    labelCount->setObjectName(QStringLiteral("labelCount"));
    bar->setObjectName(QStringLiteral("progressTransfer"));
    bar->setAccessibleName(QStringLiteral("进度"));
    bar->setTextVisible(false);
    bar->setRange(0, 0);
    auto* cancel = new WbPushButton(this, Wb::SecondaryButton);
    cancel->setObjectName(QStringLiteral("buttonCancel"));
    cancel->setText(QStringLiteral("取消"));

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(labelCount, 1);
    buttons->addWidget(cancel);
    auto* layout = new QVBoxLayout(GetContentWidget());
    layout->setContentsMargins(24, 20, 24, 24);
    layout->setSpacing(12);
    layout->addWidget(caption);
    layout->addWidget(bar);
    layout->addStretch();
    layout->addLayout(buttons);
    GetContentWidget()->setMinimumSize(DpiTool::ScaleDefault(420), DpiTool::ScaleDefault(150));
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
}

TransferDialog::~TransferDialog() = default;

void TransferDialog::ShowProgress(int done, int total)
{
    bar->setRange(0, total);
    bar->setValue(done);
    labelCount->setText(QStringLiteral("%1 / %2 个版本").arg(done).arg(total));
}
