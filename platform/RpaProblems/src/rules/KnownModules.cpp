// SPDX-License-Identifier: Apache-2.0

#include "KnownModules_p.h"

#include <QFile>
#include <QHash>
#include <QSet>
#include <QStringList>

namespace
{
QStringList LinesOf(const QString& name)
{
    QFile file(QStringLiteral(":/rpa/problems/") + name);
    if (!file.open(QIODevice::ReadOnly)) {
        qCritical("%s is missing", qUtf8Printable(name));
        return {};
    }
    return QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

QHash<QString, QString> ReadPackages()
{
    QHash<QString, QString> packages;
    const QStringList lines = LinesOf(QStringLiteral("package-modules.txt"));
    for (const QString& line : lines)
        packages.insert(line.section(QLatin1Char(' '), 0, 0), line.section(QLatin1Char(' '), 1));
    return packages;
}

const QHash<QString, QString>& Packages()
{
    static const QHash<QString, QString> packages = ReadPackages();
    return packages;
}
} // namespace

bool KnownModules::IsBuiltIn(const QString& module)
{
    static const QStringList lines = LinesOf(QStringLiteral("standard-modules.txt"));
    static const QSet<QString> modules(lines.cbegin(), lines.cend());
    return modules.contains(module) || module == QLatin1String("rpa");
}

QString KnownModules::PackageOf(const QString& module)
{
    return Packages().value(module);
}

bool KnownModules::KnowsPackage(const QString& package)
{
    static const QStringList names = Packages().values();
    return names.contains(Normalised(package));
}

QString KnownModules::Normalised(const QString& package)
{
    QString name = package.trimmed().toLower();
    return name.replace(QLatin1Char('_'), QLatin1Char('-')).replace(QLatin1Char('.'), QLatin1Char('-'));
}
