// SPDX-License-Identifier: Apache-2.0

#include "RichNotice_p.h"

#include <WbBaseUI/BaseUIBusiness.h>
#include <WbBaseUI/WbLabel.h>
#include <WbBaseUI/WbPushButton.h>

#include <QBoxLayout>

RichNotice::RichNotice(QWidget* parent)
    : QFrame(parent), label(new WbLabel), button(new WbPushButton(nullptr, Wb::SecondaryButton))
{
    setObjectName(QStringLiteral("richNotice"));
    label->setObjectName(QStringLiteral("richNoticeText"));
    label->setWordWrap(true);
    button->setObjectName(QStringLiteral("richNoticeOffer"));
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(12, 8, 12, 8);
    layout->setSpacing(12);
    layout->addWidget(label, 1);
    layout->addWidget(button);
    hide();
    connect(button, &WbPushButton::clicked, this, &RichNotice::SigAccepted);
}

void RichNotice::Show(const QString& text, const QString& offer)
{
    label->setText(text);
    button->setText(offer);
    button->setVisible(!offer.isEmpty());
    show();
}
