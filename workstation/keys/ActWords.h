// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QStringList>

// Other words by which people look for an act.
namespace ActWords
{
// text: the act's name. Empty for an act that has no others.
QStringList Of(const QString& text);
} // namespace ActWords
