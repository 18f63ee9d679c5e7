// SPDX-License-Identifier: Apache-2.0

#pragma once

class QLineEdit;

namespace WholeCharacters
{
// Lets no half of a character stand in the line, which a limit on its length leaves of an emoji.
void Keep(QLineEdit* line);
} // namespace WholeCharacters
