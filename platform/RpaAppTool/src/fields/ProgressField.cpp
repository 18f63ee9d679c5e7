// SPDX-License-Identifier: Apache-2.0

#include "ProgressField_p.h"

#include <OxBase/DpiTool.h>

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
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(DpiTool::ScaleDefault(8));
    layout->addWidget(bar, 1);
    layout->addWidget(percent);
}

QWidget* ProgressField::GetInput()
{
    return bar;
}

void ProgressField::ShowValue(const QVariant& value)
{
    // 99.9 is not yet done.
    const int shown = int(std::floor(value.toDouble()));
    bar->setValue(shown);
    percent->setText(QStringLiteral("%1%").arg(shown));
}
