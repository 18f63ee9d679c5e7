// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>

#include <functional>

namespace server
{
// Writes the text to standard error. Where nobody reads and nothing more can be taken, waits, and gives up as
// soon as `hasGivenUp` says so; false then. One source file per system.
bool WriteStandardError(const QByteArray& text, const std::function<bool()>& hasGivenUp);
} // namespace server
