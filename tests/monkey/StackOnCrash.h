// SPDX-License-Identifier: Apache-2.0

#pragma once

// Writes where the program was when it dies of a signal, and lets it die.
namespace StackOnCrash
{
void Install();
}
