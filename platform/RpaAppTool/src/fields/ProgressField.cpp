// SPDX-License-Identifier: Apache-2.0

#include "ProgressField_p.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>

#include <cmath>

ProgressField::ProgressField() : bar(new QProgressBar), percent(new QLabel)
{
    bar->setRange(0, 100);
    bar->setTextVisible(false);
    percent->setObjectName(QStringLiteral("progressPercent"));
    percent->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    percent->setMinimumWidth(percent->fontMetrics().horizontalAdvance(QStringLiteral("100%")));
    AddInput(bar, 8)->addWidget(percent);
}

void ProgressField::ShowValue(const QVariant& value)
{
    // 99.9 is not yet done.
    const int shown = int(std::floor(value.toDouble()));
    bar->setValue(shown);
    percent->setText(QStringLiteral("%1%").arg(shown));
}
