// SPDX-License-Identifier: Apache-2.0

#include <RpaServiceClient/VersionServiceSettings.h>

namespace
{
bool HasSameOrigin(const QUrl& a, const QUrl& b)
{
    const auto portOf = [](const QUrl& url) {
        return url.port(url.scheme() == QLatin1String("https") ? 443 : 80);
    };
    return a.scheme() == b.scheme() && a.host() == b.host() && portOf(a) == portOf(b);
}
} // namespace

VersionServiceSettings* VersionServiceSettings::Instance()
{
    static VersionServiceSettings settings;
    return &settings;
}

bool VersionServiceSettings::IsServiceAddress(const QUrl& url)
{
    const bool isHttp = url.scheme() == QLatin1String("http") || url.scheme() == QLatin1String("https");
    return url.isValid() && isHttp && !url.host().isEmpty() && url.userInfo().isEmpty() && !url.hasQuery() &&
           !url.hasFragment();
}

bool VersionServiceSettings::SetBaseUrl(const QUrl& url)
{
    if (!IsServiceAddress(url))
        return false;
    const bool wasAway = whereabouts != Whereabouts::Known;
    if (url == baseUrl && !wasAway)
        return true;
    if (wasAway || !HasSameOrigin(url, baseUrl)) {
        token.clear();
        ++identity;
    }
    if (wasAway)
        ++place;
    whereabouts = Whereabouts::Known;
    baseUrl = url;
    emit SigChanged();
    return true;
}

void VersionServiceSettings::LeaveAddress(bool awaited)
{
    const auto left = awaited ? Whereabouts::Awaited : Whereabouts::Lost;
    if (left == whereabouts)
        return;
    ++place;
    whereabouts = left;
    emit SigChanged();
}

bool VersionServiceSettings::ReturnAt(const QUrl& url, const QByteArray& newToken)
{
    if (!IsServiceAddress(url))
        return false;
    ++place;
    whereabouts = Whereabouts::Known;
    baseUrl = url;
    token = newToken;
    emit SigChanged();
    return true;
}

void VersionServiceSettings::AwaitAnother()
{
    ++identity;
    ++place;
    token.clear();
    whereabouts = Whereabouts::Awaited;
    emit SigChanged();
}

void VersionServiceSettings::SetToken(const QByteArray& value)
{
    if (value == token)
        return;
    token = value;
    ++identity;
    emit SigChanged();
}
