// SPDX-License-Identifier: Apache-2.0

#include "NativeProcess.h"

#include <csignal>

namespace NativeProcess
{
void Kill(qint64 id)
{
    // Not 0 and not negative: those name groups, ours among them.
    if (id > 0)
        ::kill(static_cast<pid_t>(id), SIGKILL);
}

bool IsAlive(qint64 id)
{
    return id > 0 && ::kill(static_cast<pid_t>(id), 0) == 0;
}
} // namespace NativeProcess
