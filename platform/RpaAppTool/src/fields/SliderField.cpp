// SPDX-License-Identifier: Apache-2.0

#include "SliderField_p.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <QSlider>

#include <cmath>

namespace
{
constexpr double usualSpan = 100;
constexpr double mostSteps = 10000;

QString TextOf(double value)
{
    return QString::number(value, 'g', 10);
}
} // namespace

SliderField::SliderField(const RpaParamItem& item)
    : least(item.least.isValid() ? item.least.toDouble() : 0), slider(new QSlider(Qt::Horizontal)),
      number(new QLabel)
{
    const double most = item.most.isValid() ? item.most.toDouble() : least + usualSpan;
    const double span = std::isfinite(most - least) ? qMax(0.0, most - least) : usualSpan;
    // Steps that are too fine to be told apart are made coarser.
    step = qMax(item.step > 0 ? item.step : span / usualSpan, span / mostSteps);
    const int steps = step > 0 ? int(std::floor(span / step + 1e-9)) : 0;
    slider->setRange(0, steps);
    slider->setPageStep(qMax(1, steps / 10));
    number->setObjectName(QStringLiteral("sliderNumber"));
    number->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    const QFontMetrics font = number->fontMetrics();
    number->setMinimumWidth(qMax(font.horizontalAdvance(TextOf(ValueAt(steps))),
                                 font.horizontalAdvance(TextOf(ValueAt(steps - 1)))));
    AddInput(slider, 8)->addWidget(number);
    connect(slider, &QSlider::valueChanged, this, [this](int place) {
        ShowNumber(ValueAt(place));
        emit SigEntered(ValueAt(place));
    });
}

double SliderField::ValueAt(int place) const
{
    // 0.1 + 2 * 0.1 is not what a user calls 0.3.
    return TextOf(least + place * step).toDouble();
}

void SliderField::ShowValue(const QVariant& value)
{
    const QSignalBlocker blocker(slider);
    const double place = step > 0 ? std::round((value.toDouble() - least) / step) : 0;
    slider->setValue(int(qBound(0.0, place, double(slider->maximum()))));
    ShowNumber(value.toDouble());
}

void SliderField::ShowNumber(double shown)
{
    number->setText(TextOf(shown));
}
