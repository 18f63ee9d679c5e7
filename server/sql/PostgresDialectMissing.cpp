// SPDX-License-Identifier: Apache-2.0

#include "Dialect.h"

namespace server
{
std::unique_ptr<IDialect> MakePostgresDialect(const QString&)
{
    throw StoreError(StoreFault::Unavailable, QStringLiteral("this server was built without PostgreSQL"));
}

QString PostgresName()
{
    return {};
}
} // namespace server
