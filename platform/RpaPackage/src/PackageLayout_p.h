// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>
#include <QStringList>

// How Python lays out an environment. One source file per system.
namespace PackageLayout
{

QString GetPython(const QString& environment);

// Folders of installed packages that exist.
QStringList GetPackageFolders(const QString& environment);

// Python's os.devnull as pip spells it: as its settings file it means that there is none.
QString NullDevice();

} // namespace PackageLayout
