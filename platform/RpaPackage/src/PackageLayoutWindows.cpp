// SPDX-License-Identifier: Apache-2.0

#include "PackageLayout_p.h"

#include <QDir>

QString PackageLayout::GetPython(const QString& environment)
{
    return environment + QStringLiteral("/Scripts/python.exe");
}

QStringList PackageLayout::GetPackageFolders(const QString& environment)
{
    const QString path = environment + QStringLiteral("/Lib/site-packages");
    return QDir(path).exists() ? QStringList{path} : QStringList();
}

QString PackageLayout::NullDevice()
{
    return QStringLiteral("nul");
}
