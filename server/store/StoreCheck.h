// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "../sql/Dialect.h"

namespace server
{
struct CheckResult
{
    qint64 revisions = 0;
    QStringList faults; // one line each
};

// Reads everything and compares: app data with its SHA-256, each version with its newest revision, the
// history with itself. `structureToo`: also the pages of a SQLite file, which keeps others from writing for
// the time of it. Throws StoreError when the store cannot be read at all.
CheckResult CheckStore(const std::shared_ptr<const IDialect>& store, bool structureToo);
} // namespace server
