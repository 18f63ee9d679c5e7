// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "../options/Options.h"
#include "../store/Store.h"

namespace server
{
// Carries out "account add|password|roles|close|reopen|list"; the exit code of the process. Passwords come
// from a file or from standard input, so that they never stand in the list of processes.
int RunAccountCommand(Store& store, const Options& options);
} // namespace server
