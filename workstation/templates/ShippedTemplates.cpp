// SPDX-License-Identifier: Apache-2.0

#include "ShippedTemplates.h"

#include <QDir>
#include <QFile>
#include <QSet>

namespace
{
QSet<QString> ReadInstalled(const QString& fileName)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QStringList names = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    return QSet<QString>(names.begin(), names.end());
}

bool WriteInstalled(const QString& fileName, const QSet<QString>& names)
{
    QStringList lines(names.begin(), names.end());
    lines.sort();
    const QByteArray text = lines.join(QLatin1Char('\n')).toUtf8();
    QFile file(fileName);
    return file.open(QIODevice::WriteOnly) && file.write(text) == text.size();
}

bool Copy(const QString& from, const QString& to)
{
    if (QFile::exists(to))
        return true;
    // Files of the bundle are read-only; the author may overwrite the copy.
    return QFile::copy(from, to) && QFile::setPermissions(to, QFile::ReadOwner | QFile::WriteOwner);
}
} // namespace

bool ShippedTemplates::Install(const QString& visualDir, const QString& programDir, const QString& dataDir)
{
    const QString listFile = dataDir + QStringLiteral("/templates-shipped");
    QSet<QString> installed = ReadInstalled(listFile);
    const int before = installed.size();
    bool complete = true;
    for (const auto& [kind, folder] : {std::make_pair(QStringLiteral("visual"), visualDir),
                                       std::make_pair(QStringLiteral("program"), programDir)}) {
        const QDir bundle(QStringLiteral(":/templates/") + kind);
        for (const QString& name : bundle.entryList(QDir::Files, QDir::Name)) {
            const QString key = kind + QLatin1Char('/') + name;
            if (installed.contains(key))
                continue;
            if (Copy(bundle.filePath(name), folder + QLatin1Char('/') + name))
                installed.insert(key);
            else
                complete = false;
        }
    }
    return (installed.size() == before || WriteInstalled(listFile, installed)) && complete;
}
