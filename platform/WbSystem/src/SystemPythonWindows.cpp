// SPDX-License-Identifier: Apache-2.0

#include "SystemPython_p.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>

namespace
{

// Windows puts programs of this folder into the search path that open its shop instead of running anything.
bool IsPlaceholder(const QString& path)
{
    return path.contains(QLatin1String("/Microsoft/WindowsApps/"), Qt::CaseInsensitive);
}

} // namespace

QString SystemPython(const QString& programFolder)
{
    const QString bundled = programFolder + QStringLiteral("/python/python.exe");
    if (QFile::exists(bundled))
        return QDir::toNativeSeparators(bundled);
    for (const QString& name : {QStringLiteral("py.exe"), QStringLiteral("python.exe")}) {
        const QString found = QStandardPaths::findExecutable(name);
        if (!found.isEmpty() && !IsPlaceholder(found))
            return QDir::toNativeSeparators(found);
    }
    return {};
}
