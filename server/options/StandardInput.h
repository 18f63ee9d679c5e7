// SPDX-License-Identifier: Apache-2.0

#pragma once

namespace server
{
// Up to `size` bytes of standard input, waiting for the first; 0 or less at its end. Straight from the
// system: nothing may stay behind in a buffer, and a thread blocked here holds no lock of stdio. One source
// file per system.
int ReadStandardInput(char* target, unsigned size);
} // namespace server
