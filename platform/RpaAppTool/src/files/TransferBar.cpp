// SPDX-License-Identifier: Apache-2.0

#include "TransferBar_p.h"

#include <OxBase/DpiTool.h>
#include <WbBaseUI/WbPushButton.h>

#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>

TransferBar::TransferBar(QWidget* parent)
    : QWidget(parent), label(new QLabel), progress(new QProgressBar), cancel(new WbPushButton)
{
    progress->setObjectName(QStringLiteral("transferProgress"));
    progress->setRange(0, 1000);
    progress->setTextVisible(false);
    cancel->setText(QStringLiteral("取消"));
    cancel->setObjectName(QStringLiteral("transferCancel"));
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(DpiTool::ScaleDefault(8));
    layout->addWidget(label);
    layout->addWidget(progress, 1);
    layout->addWidget(cancel);
    connect(cancel, &QPushButton::clicked, this, &TransferBar::SigCancel);
    hide();
}

void TransferBar::Open(const QString& text)
{
    label->setText(text);
    progress->setAccessibleName(text);
    ShowProgress(0);
    cancel->setEnabled(true);
    show();
}

void TransferBar::ShowProgress(int permille)
{
    progress->setValue(permille);
}
