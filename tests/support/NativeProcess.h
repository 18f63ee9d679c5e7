// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QtGlobal>

// Processes by their id, straight from the system; one source file per system. Any thread.
namespace NativeProcess
{
// Ends it at once, without asking it.
void Kill(qint64 id);

bool IsAlive(qint64 id);
} // namespace NativeProcess
