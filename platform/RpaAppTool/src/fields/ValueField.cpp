// SPDX-License-Identifier: Apache-2.0

#include "ChoicesField_p.h"
#include "LinesField_p.h"
#include "PictureField_p.h"
#include "ProgressField_p.h"
#include "SliderField_p.h"
#include "ValueField_p.h"

#include <OxBase/DpiTool.h>

#include <QHBoxLayout>

QHBoxLayout* ValueField::AddInput(QWidget* widget, int spacing)
{
    input = widget;
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(DpiTool::ScaleDefault(spacing));
    row->addWidget(input, 1);
    return row;
}

ValueField* ValueField::Create(const RpaParamItem& item)
{
    switch (item.type) {
    case RpaParamType::Lines:
    case RpaParamType::Files:
        return new LinesField(item);
    case RpaParamType::Choices:
        return new ChoicesField(item);
    case RpaParamType::Slider:
        return new SliderField(item);
    case RpaParamType::Progress:
        return new ProgressField;
    case RpaParamType::Picture:
        return new PictureField(item.GetTitle());
    default:
        return nullptr;
    }
}
