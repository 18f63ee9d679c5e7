// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbBaseUI/WbTheme.h>

#include <array>

// One colour of the design: what it is called in the style sheet template and its value in each scheme.
struct ColorToken
{
    WbColor color;
    const char* name;
    QRgb light;
    QRgb dark;
};

// In the order of WbColor.
constexpr std::size_t colorCount = static_cast<std::size_t>(WbColor::ExecutionLine) + 1;
const std::array<ColorToken, colorCount>& ColorTokens();
