// SPDX-License-Identifier: Apache-2.0

#include "WorkstationSettings.h"

#include <QDir>
#include <QFile>
#include <QHostAddress>
#include <QSslCertificate>
#include <QSslSocket>

namespace
{
constexpr qint64 largestCaFile = 4 * 1024 * 1024;
constexpr const char* themeNames[] = {"system", "light", "dark"};

bool IsLoopback(const QString& host)
{
    return host == QLatin1String("localhost") || QHostAddress(host).isLoopback();
}
} // namespace

WorkstationSettings::WorkstationSettings(const QString& file, QObject* parent)
    : QObject(parent), store(file, QSettings::IniFormat)
{
    store.setIniCodec("UTF-8");
}

bool WorkstationSettings::Write(const char* key, const QVariant& value)
{
    const QString name = QLatin1String(key);
    if (store.value(name) == value)
        return false;
    store.setValue(name, value);
    store.sync();
    return true;
}

void WorkstationSettings::SetEmbeddedServer(bool embedded)
{
    if (embedded != GetEmbeddedServer() && Write(embeddedKey, embedded))
        emit SigServerChanged();
}

QUrl WorkstationSettings::GetServerAddress() const
{
    const QString text = Read(addressKey).toString();
    return AddressProblem(text).isEmpty() ? QUrl(text) : QUrl();
}

void WorkstationSettings::SetServerAddress(const QUrl& address)
{
    if (Write(addressKey, address.toString()) && !GetEmbeddedServer())
        emit SigServerChanged();
}

QString WorkstationSettings::AddressProblem(const QString& text)
{
    const QUrl url(text.trimmed(), QUrl::StrictMode);
    const QString scheme = url.scheme();
    if (text.trimmed().isEmpty())
        return QStringLiteral("请输入服务器地址");
    if (!url.isValid() || url.host().isEmpty() ||
        (scheme != QLatin1String("http") && scheme != QLatin1String("https")))
        return QStringLiteral("地址应形如 https://rpa.example.com:8443");
    if (!url.userInfo().isEmpty() || url.hasQuery() || url.hasFragment() || url.path().size() > 1)
        return QStringLiteral("地址只包含协议、主机和端口");
    // The token travels with every request: in clear text it may only go to this machine.
    if (scheme == QLatin1String("http") && !IsLoopback(url.host()))
        return QStringLiteral("远程服务器须使用 https:// 地址");
    return {};
}

QString WorkstationSettings::CaFileProblem(const QString& path)
{
    const QString shown = QDir::toNativeSeparators(path);
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QStringLiteral("无法读取证书文件：%1").arg(shown);
    const QByteArray content = file.read(largestCaFile);
    // Where Qt comes without TLS, the mark of such files has to do.
    const bool hasCertificate = QSslSocket::supportsSsl()
                                    ? !QSslCertificate::fromData(content, QSsl::Pem).isEmpty()
                                    : content.contains("-----BEGIN CERTIFICATE-----");
    return hasCertificate ? QString() : QStringLiteral("文件中没有 PEM 格式的证书：%1").arg(shown);
}

ThemeChoice WorkstationSettings::GetTheme() const
{
    const QString name = Read(themeKey).toString();
    for (int i = 0; i < 3; ++i)
        if (name == QLatin1String(themeNames[i]))
            return static_cast<ThemeChoice>(i);
    return ThemeChoice::System;
}

void WorkstationSettings::SetTheme(ThemeChoice theme)
{
    if (Write(themeKey, QString::fromLatin1(themeNames[static_cast<int>(theme)])))
        emit SigThemeChanged(theme);
}

const QVector<int>& WorkstationSettings::AllScales()
{
    static const QVector<int> scales{100, 125, 150, 175, 200};
    return scales;
}

int WorkstationSettings::GetScale() const
{
    const int percent = Read(scaleKey).toInt();
    return AllScales().contains(percent) ? percent : AllScales().first();
}

void WorkstationSettings::SetScale(int percent)
{
    if (percent != GetScale() && AllScales().contains(percent) && Write(scaleKey, percent))
        emit SigScaleChanged(percent);
}

DateLanguage WorkstationSettings::GetDateLanguage() const
{
    return DateLanguageFromKey(Read(dateKey).toString());
}

void WorkstationSettings::SetDateLanguage(DateLanguage language)
{
    if (Write(dateKey, DateLanguageKey(language)))
        emit SigDateLanguageChanged(language);
}

void WorkstationSettings::SetTips(bool tips)
{
    if (tips == GetTips())
        return;
    if (tips)
        store.remove(QLatin1String(seenTipsKey));
    Write(tipsKey, tips);
    emit SigTipsChanged(tips);
}

void WorkstationSettings::AddSeenTip(const QString& place)
{
    QStringList seen = GetSeenTips();
    if (!seen.contains(place))
        Write(seenTipsKey, seen << place);
}
