// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

#include <functional>

namespace server::rules
{
// The name with the ending, cut before it to `most` characters.
QString WithEnding(const QString& name, const QString& ending, int most);

// The name, or with the first number from 2 on that makes it free; at most `most` characters.
QString FreeName(const QString& name, int most, const std::function<bool(const QString&)>& isTaken);
} // namespace server::rules
