// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "Dialect.h"

namespace server
{
class SqlConnection;

// The schema version that this program writes.
int CurrentSchema();

// Brings the schema of the database up to CurrentSchema() in one transaction. Throws StoreError,
// also for a store that a newer program has written.
void MigrateSchema(SqlConnection& connection, const IDialect& dialect);
} // namespace server
