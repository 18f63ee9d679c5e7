// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "../options/Options.h"

namespace server
{
// Carries out "backup", "verify", "restore" and "move"; the exit code of the process: 3 when something in the
// store is damaged. Throws StoreError.
int RunStoreCommand(const Options& options);
} // namespace server
