// SPDX-License-Identifier: Apache-2.0

#pragma once

// Which cores this program uses, and how much of them. One source file per system.
namespace ProcessorUse
{
// This program and what it starts from now on run on one core, or on all again.
void UseOneCore(bool one);

// Time that this program has computed, its children not counted.
double GetSeconds();
} // namespace ProcessorUse
