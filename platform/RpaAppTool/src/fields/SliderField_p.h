// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "ValueField_p.h"

#include <RpaAppData/RpaParamData.h>

class QLabel;
class QSlider;

// A number that is moved between two ends, in steps.
class SliderField : public ValueField
{
    Q_OBJECT

public:
    explicit SliderField(const RpaParamItem& item);

    void ShowValue(const QVariant& value) override;

private:
    double ValueAt(int place) const;
    void ShowNumber(double number);

    const double least;
    double step = 1;
    QSlider* slider;
    QLabel* number;
};
