// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

namespace WheelMaker
{
// Writes a wheel with one module of the wheel's name into the folder; program is the module's Python text.
// False when it could not be written.
bool Make(const QString& folder, const QString& name, const QString& version, const QString& program);
} // namespace WheelMaker
