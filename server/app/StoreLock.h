// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbSystem/FileLock.h>

#include <QString>

#include <memory>

namespace server
{
// What one server keeps in memory another one must not change behind its back, so a file serves one server at
// a time. Null for a store that several servers may use; throws StoreError when another server has it.
std::unique_ptr<FileLock> LockStore(const QString& address);
} // namespace server
