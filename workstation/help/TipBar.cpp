// SPDX-License-Identifier: Apache-2.0

#include "TipBar.h"

#include <WbBaseUI/BaseUIBusiness.h>
#include <WbBaseUI/WbLabel.h>
#include <WbBaseUI/WbPushButton.h>
#include <WbBaseUI/WbScaledForm.h>

#include <QHBoxLayout>

TipBar::TipBar(QWidget* parent) : QFrame(parent), text(new WbLabel)
{
    setObjectName(QStringLiteral("tipBar"));
    text->setObjectName(QStringLiteral("labelTip"));
    text->setWordWrap(true);
    auto* done = new WbPushButton(nullptr, Wb::SecondaryButton);
    done->setObjectName(QStringLiteral("buttonTipDone"));
    done->setText(QStringLiteral("知道了"));
    auto* noMore = new WbPushButton(nullptr, Wb::SecondaryButton);
    noMore->setObjectName(QStringLiteral("buttonTipsOff"));
    noMore->setText(QStringLiteral("不再提示"));
    noMore->setToolTip(QStringLiteral("可以在设置中重新打开"));
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(28, 6, 28, 6);
    layout->setSpacing(12);
    layout->addWidget(text, 1);
    layout->addWidget(done);
    layout->addWidget(noMore);
    hide();
    connect(done, &QPushButton::clicked, this, &TipBar::SigDone);
    connect(noMore, &QPushButton::clicked, this, &TipBar::SigNoMore);
    WbScaledForm::Follow(this);
}

TipBar::~TipBar() = default;

void TipBar::Tell(const QString& tip)
{
    text->setText(tip);
    setVisible(!tip.isEmpty());
}
