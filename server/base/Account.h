// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>
#include <QStringList>

namespace server
{
// Who may sign in, and as what. A plain value.
struct Account
{
    QString pin; // also the name to sign in with
    QString name;
    QString venderId;
    QStringList roles;   // of "author", "user", "administrator"
    qint64 closedAt = 0; // 0: open; nobody signs in with a closed account

    bool IsAuthor() const { return roles.contains(QLatin1String("author")); }
    bool IsAdministrator() const { return roles.contains(QLatin1String("administrator")); }
};
} // namespace server
