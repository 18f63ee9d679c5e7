// SPDX-License-Identifier: Apache-2.0

#pragma once

namespace server
{
// How many of the wanted connections the system has descriptors for, beside the files that are open and those
// that the store needs to work. Asks the system for as many as it may have first.
int ConnectionsThatFit(int wanted, int workers);
} // namespace server
