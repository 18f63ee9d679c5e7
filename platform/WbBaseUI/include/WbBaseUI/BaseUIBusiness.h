// SPDX-License-Identifier: Apache-2.0

#pragma once

namespace Wb
{
// Which family of the theme a base widget belongs to.
enum class BaseUIBusiness
{
    General = 0,
    Editor = 1,
};

// Weight of a button.
enum ButtonType
{
    DefaultButton = 0,
    PrimaryButton = 1,
    DangerButton = 2,
    SecondaryButton = 3,
};
} // namespace Wb
