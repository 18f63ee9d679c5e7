// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbSystem/FileLock.h>

// The open and locked file, one source file per system.
namespace LockedFile
{
// handle: set when the file is locked; only then it must be closed.
FileLock::Result Open(const QString& file, qintptr* handle);
void Close(qintptr handle);
} // namespace LockedFile
