// SPDX-License-Identifier: Apache-2.0

#include "ThemeTokens_p.h"

// Both schemes stand side by side so that neither can have a colour the other lacks. Text on its background
// keeps a contrast of at least 4.5, marks that carry meaning at least 3, disabled text 2.5; the tests compute
// all of them.
const std::array<ColorToken, colorCount>& ColorTokens()
{
    static const std::array<ColorToken, colorCount> tokens = {{
        {WbColor::Window, "window", 0xfff3f5f9, 0xff14171d},
        {WbColor::Surface, "surface", 0xffffffff, 0xff1c2028},
        {WbColor::SurfaceRaised, "surface-raised", 0xffffffff, 0xff232831},
        {WbColor::Field, "field", 0xffffffff, 0xff171a21},
        {WbColor::Stripe, "stripe", 0xfff7f8fb, 0xff20242d},
        {WbColor::Hover, "hover", 0xffeef2f9, 0xff2c323e},
        {WbColor::Pressed, "pressed", 0xffe1e7f2, 0xff363d4b},
        {WbColor::Selection, "selection", 0xffdce8ff, 0xff263d6b},
        {WbColor::Border, "border", 0xffdfe4ed, 0xff343a47},
        {WbColor::BorderStrong, "border-strong", 0xff828b9f, 0xff6d7789},
        {WbColor::Text, "text", 0xff1b2130, 0xffe8ecf4},
        {WbColor::TextSecondary, "text-secondary", 0xff566077, 0xffa9b3c5},
        {WbColor::TextDisabled, "text-disabled", 0xff8790a3, 0xff7a859a},
        {WbColor::TextOnAccent, "text-on-accent", 0xffffffff, 0xffffffff},
        {WbColor::Accent, "accent", 0xff2b5ce0, 0xff3c69e4},
        {WbColor::AccentHover, "accent-hover", 0xff2450c8, 0xff3360d8},
        {WbColor::AccentPressed, "accent-pressed", 0xff1d43ac, 0xff2a52bf},
        {WbColor::AccentText, "accent-text", 0xff2450c8, 0xff8fb0ff},
        {WbColor::AccentSoft, "accent-soft", 0xffeaf0ff, 0xff22304f},
        {WbColor::FocusRing, "focus-ring", 0xff2b5ce0, 0xff8fb0ff},
        {WbColor::FocusOnFill, "focus-on-fill", 0xffb3c9ff, 0xffd5e1ff},
        {WbColor::Danger, "danger", 0xffc8322b, 0xffcf3b33},
        {WbColor::DangerHover, "danger-hover", 0xffb02a24, 0xffbb332c},
        {WbColor::DangerPressed, "danger-pressed", 0xff96231e, 0xffa32b25},
        {WbColor::DangerText, "danger-text", 0xffb42318, 0xffff9c94},
        {WbColor::DangerSoft, "danger-soft", 0xfffdecea, 0xff432423},
        {WbColor::WarningText, "warning-text", 0xff8a5300, 0xfff4b860},
        {WbColor::WarningSoft, "warning-soft", 0xfffff4df, 0xff3d2f16},
        {WbColor::SuccessText, "success-text", 0xff16703a, 0xff62cc8b},
        {WbColor::SuccessSoft, "success-soft", 0xffe4f6eb, 0xff173726},
        {WbColor::ToolTip, "tool-tip", 0xff2a3140, 0xff3a4252},
        {WbColor::ToolTipText, "tool-tip-text", 0xffffffff, 0xfff0f3f9},
        {WbColor::ScrollHandle, "scroll-handle", 0xffc3cad7, 0xff454d5d},
        {WbColor::ScrollHandleHover, "scroll-handle-hover", 0xff98a2b5, 0xff626c7f},
        {WbColor::CodeKeyword, "code-keyword", 0xff7a2fbf, 0xffc99bff},
        {WbColor::CodeString, "code-string", 0xff1b6e3c, 0xff8fd6a4},
        {WbColor::CodeNumber, "code-number", 0xff9a4a00, 0xfff2b27a},
        {WbColor::CodeComment, "code-comment", 0xff5f697d, 0xff98a3b6},
        {WbColor::CodeFunction, "code-function", 0xff1f55c4, 0xff8fb8ff},
        {WbColor::CodeCurrentLine, "code-current-line", 0xfff1f5fd, 0xff20252f},
        {WbColor::Breakpoint, "breakpoint", 0xffd63a31, 0xffff6b61},
        {WbColor::ExecutionLine, "execution-line", 0xfffff0c2, 0xff3b3211},
    }};
    return tokens;
}
