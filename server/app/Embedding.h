// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "../accounts/Sessions.h"

#include <functional>
#include <string>

namespace server
{
// One line of standard input, without its end; empty at its end or after 1 MB without one.
std::string ReadInputLine();

// Takes over the accounts and tokens that the workstation hands to its own server. False when the line is not
// as agreed.
bool AdmitWorkstation(const std::string& line, Store& store, Sessions& sessions);

// Calls `act` once, on a thread of its own, when standard input ends: the workstation is gone.
void OnInputEnd(std::function<void()> act);
} // namespace server
