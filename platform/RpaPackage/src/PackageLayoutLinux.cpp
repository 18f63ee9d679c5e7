// SPDX-License-Identifier: Apache-2.0

#include "PackageLayout_p.h"

#include <QDir>

QString PackageLayout::GetPython(const QString& environment)
{
    return environment + QStringLiteral("/bin/python");
}

QStringList PackageLayout::GetPackageFolders(const QString& environment)
{
    QStringList folders;
    const QDir lib(environment + QStringLiteral("/lib"));
    const QStringList versions = lib.entryList({QStringLiteral("python3*")}, QDir::Dirs);
    for (const QString& version : versions) {
        const QString path = lib.filePath(version + QStringLiteral("/site-packages"));
        if (QDir(path).exists())
            folders << path;
    }
    return folders;
}

QString PackageLayout::NullDevice()
{
    return QStringLiteral("/dev/null");
}
