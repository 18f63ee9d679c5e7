// SPDX-License-Identifier: Apache-2.0

#include "PackageEnvironment_p.h"
#include "PackageLayout_p.h"

#include <QCryptographicHash>
#include <QFile>

namespace
{

QString ReadyMark(const QString& folder)
{
    return folder + QStringLiteral("/.ready");
}

} // namespace

PackageEnvironment::PackageEnvironment(const QString& dataFolder, const QString& appId)
    : folder(dataFolder + QLatin1Char('/') + FolderName(appId))
{
}

QString PackageEnvironment::FolderName(const QString& appId)
{
    constexpr int readable = 32;
    constexpr int hashed = 16;
    QString name;
    for (const QChar c : appId.left(readable)) {
        const bool harmless = c.unicode() < 128 && (c.isLetterOrNumber() || c == QLatin1Char('-'));
        name += harmless ? c : QLatin1Char('_');
    }
    const QByteArray hash = QCryptographicHash::hash(appId.toUtf8(), QCryptographicHash::Sha256).toHex();
    return name + QLatin1Char('.') + QString::fromLatin1(hash.left(hashed));
}

QString PackageEnvironment::GetPython() const
{
    return PackageLayout::GetPython(folder);
}

bool PackageEnvironment::IsReady() const
{
    // The link of a Python that was removed from the system does not exist either.
    return QFile::exists(ReadyMark(folder)) && QFile::exists(GetPython());
}

bool PackageEnvironment::MarkReady() const
{
    QFile mark(ReadyMark(folder));
    return mark.open(QIODevice::WriteOnly);
}

QStringList PackageEnvironment::GetPackageFolders() const
{
    return IsReady() ? PackageLayout::GetPackageFolders(folder) : QStringList();
}
