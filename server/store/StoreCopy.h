// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "../sql/Dialect.h"

namespace server
{
struct CopyResult
{
    qint64 rows = 0;
    qint64 revisions = 0;
    QStringList damaged; // revisions that are not what was saved; they are copied as they are
};

// Copies a store into an empty one, as it was at one moment, while others work on it. App data, which never
// changes, is taken beforehand piece by piece; only what is small, and what came meanwhile, is read in one
// transaction. The copy is one transaction too: it is there as a whole or not at all. Throws StoreError, also
// when the target has something in it or the source has another schema than this program.
CopyResult CopyStore(const std::shared_ptr<const IDialect>& from, const std::shared_ptr<const IDialect>& to);

// The schema of a store; 0 when it is none.
int SchemaOf(const std::shared_ptr<const IDialect>& store);
} // namespace server
