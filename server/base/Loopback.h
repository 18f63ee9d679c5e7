#pragma once

#include <QString>

namespace server
{
// True for a host that names this machine only.
inline bool IsLoopback(const QString& host)
{
    return host == QLatin1String("localhost") || host == QLatin1String("::1") ||
           host == QLatin1String("[::1]") || host.startsWith(QLatin1String("127."));
}
} // namespace server
