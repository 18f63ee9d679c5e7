// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QColor>

#include <cmath>

// How well one colour is read on another: 1 for the same, 21 for black on white.
inline qreal ColorContrast(const QColor& a, const QColor& b)
{
    const auto linear = [](qreal channel) {
        return channel <= 0.03928 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
    };
    const auto luminance = [linear](const QColor& c) {
        return 0.2126 * linear(c.redF()) + 0.7152 * linear(c.greenF()) + 0.0722 * linear(c.blueF());
    };
    const qreal first = luminance(a);
    const qreal second = luminance(b);
    return (qMax(first, second) + 0.05) / (qMin(first, second) + 0.05);
}
