// SPDX-License-Identifier: Apache-2.0

#include "RequestRules_p.h"

#include <algorithm>

namespace
{
bool IsLoopback(const QString& host)
{
    return host == QLatin1String("127.0.0.1") || host == QLatin1String("::1") ||
           host.compare(QLatin1String("localhost"), Qt::CaseInsensitive) == 0;
}

bool HasValidAddress(const QUrl& url)
{
    const QString scheme = url.scheme();
    return url.isValid() && !url.host().isEmpty() && url.userInfo().isEmpty() &&
           (scheme == QLatin1String("http") || scheme == QLatin1String("https"));
}

bool IsOneLine(const QByteArray& text)
{
    return std::none_of(text.cbegin(), text.cend(),
                        [](char c) { return c == '\r' || c == '\n' || c == '\0'; });
}

bool IsMethod(const QByteArray& method)
{
    return !method.isEmpty() &&
           std::all_of(method.cbegin(), method.cend(), [](char c) { return c >= 'A' && c <= 'Z'; });
}
} // namespace

bool MaySend(const WbHttpRequest& request)
{
    if (!IsMethod(request.method) || !HasValidAddress(request.url) || !IsOneLine(request.bearerToken))
        return false;
    const bool hasSecret = request.hasSecretBody || !request.bearerToken.isEmpty();
    const bool isPrivate = request.url.scheme() == QLatin1String("https") || IsLoopback(request.url.host());
    return (!hasSecret || isPrivate) &&
           std::all_of(request.headers.cbegin(), request.headers.cend(), [](const auto& header) {
               return !header.first.isEmpty() && IsOneLine(header.first) && IsOneLine(header.second) &&
                      !header.first.contains(':');
           });
}
