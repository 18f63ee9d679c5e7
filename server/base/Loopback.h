// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QRegularExpression>

namespace server
{
// True for a host that names this machine only.
inline bool IsLoopback(const QString& host)
{
    static const QRegularExpression addresses(QStringLiteral("^127\\.\\d+\\.\\d+\\.\\d+$"));
    return host == QLatin1String("localhost") || host == QLatin1String("::1") ||
           host == QLatin1String("[::1]") || addresses.match(host).hasMatch();
}
} // namespace server
