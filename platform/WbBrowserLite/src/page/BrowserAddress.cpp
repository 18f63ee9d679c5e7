// SPDX-License-Identifier: Apache-2.0

#include "BrowserAddress_p.h"

#include <QHostAddress>

namespace
{
// Machines of one's own network rarely have a certificate.
bool IsNearby(const QString& host)
{
    return !host.contains(QLatin1Char('.')) || !QHostAddress(host).isNull();
}

bool HasScheme(const QString& text)
{
    const int colon = text.indexOf(QLatin1Char(':'));
    if (colon <= 0)
        return false;
    if (text.midRef(colon, 3) == QLatin1String("://"))
        return true;
    // "host:8080" has a port, "mailto:somebody" has a scheme.
    return colon + 1 >= text.size() || !text.at(colon + 1).isDigit();
}
} // namespace

QUrl BrowserAddress::FromTyped(const QString& text)
{
    const QString typed = text.trimmed();
    if (typed.isEmpty() || typed.contains(QLatin1Char(' ')))
        return QUrl();
    if (HasScheme(typed))
        return QUrl(typed, QUrl::TolerantMode);
    QUrl url(QStringLiteral("http://") + typed, QUrl::TolerantMode);
    const QString host = url.host();
    const bool named = host.contains(QLatin1Char('.')) || host == QLatin1String("localhost") ||
                       url.port() > 0 || !QHostAddress(host).isNull();
    if (!named)
        return QUrl();
    if (!IsNearby(host) && url.port() < 0)
        url.setScheme(QStringLiteral("https"));
    return url;
}

bool BrowserAddress::MayOpen(const QUrl& url)
{
    const bool web = url.scheme() == QLatin1String("http") || url.scheme() == QLatin1String("https");
    return url.isValid() && web && !url.host().isEmpty();
}

QString BrowserAddress::Refusal(const QString& address)
{
    return QStringLiteral("无法打开“%1”：内置浏览器只打开 http 和 https 网址").arg(address.left(200));
}
