// SPDX-License-Identifier: Apache-2.0

#include "FieldTop_p.h"

#include <OxBase/DpiTool.h>

#include <QHBoxLayout>
#include <QLabel>

namespace
{
constexpr int rowHeight = 26;
}

FieldTop::FieldTop(QLabel* label, QWidget* parent) : QWidget(parent), layout(new QHBoxLayout(this))
{
    setObjectName(QStringLiteral("fieldTop"));
    setFixedHeight(DpiTool::ScaleDefault(rowHeight));
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(label);
    layout->addStretch();
}

void FieldTop::AddButton(QWidget* button)
{
    layout->addWidget(button);
}
