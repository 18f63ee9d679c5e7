#include <RpaEditorLogic/VersionServiceSettings.h>

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

bool VersionServiceSettings::SetBaseUrl(const QUrl& url)
{
    const bool isHttp = url.scheme() == QLatin1String("http") || url.scheme() == QLatin1String("https");
    if (!url.isValid() || !isHttp || url.host().isEmpty() || !url.userInfo().isEmpty() || url.hasQuery() ||
        url.hasFragment())
        return false;
    if (url == baseUrl)
        return true;
    if (!HasSameOrigin(url, baseUrl))
        token.clear();
    baseUrl = url;
    emit SigChanged();
    return true;
}

QUrl VersionServiceSettings::GetBaseUrl() const
{
    return baseUrl;
}

void VersionServiceSettings::SetToken(const QByteArray& value)
{
    if (value == token)
        return;
    token = value;
    emit SigChanged();
}

QByteArray VersionServiceSettings::GetToken() const
{
    return token;
}

void VersionServiceSettings::SetAllowPlainSecrets(bool allow)
{
    allowPlainSecrets = allow;
}

bool VersionServiceSettings::GetAllowPlainSecrets() const
{
    return allowPlainSecrets;
}

void VersionServiceSettings::SetCaFile(const QString& path)
{
    caFile = path;
}

QString VersionServiceSettings::GetCaFile() const
{
    return caFile;
}

void VersionServiceSettings::SetLimits(const WbHttpLimits& value)
{
    limits = value;
}

WbHttpLimits VersionServiceSettings::GetLimits() const
{
    return limits;
}

void VersionServiceSettings::SetRepeatSpacing(const RepeatSpacing& spacing)
{
    repeatSpacing = spacing;
}

VersionServiceSettings::RepeatSpacing VersionServiceSettings::GetRepeatSpacing() const
{
    return repeatSpacing;
}
