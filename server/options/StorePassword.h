// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

// Everybody on a machine can list the command lines of its processes, so the password of a PostgreSQL store
// has another way in.
namespace server::storepassword
{
// Whether the address, as it was given, holds a password.
bool IsIn(const QString& address);

// The address with the password that is the first line of `source`, a file or "-" for standard input; what
// follows there stays unread. Sets `problem` when there is none or the address is of no PostgreSQL store.
QString Add(const QString& address, const QString& source, QString& problem);
} // namespace server::storepassword
