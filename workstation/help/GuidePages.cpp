// SPDX-License-Identifier: Apache-2.0

#include "GuidePages.h"

#include <QFile>

namespace
{
GuidePage Read(const QString& name)
{
    GuidePage page;
    page.file = name;
    QFile file(QStringLiteral(":/guide/") + name);
    if (!file.open(QIODevice::ReadOnly))
        return page;
    const QStringList lines = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'));
    for (const QString& line : lines)
        if (line.startsWith(QLatin1String("# ")))
            page.title = line.mid(2).trimmed();
        else if (line.startsWith(QLatin1String("## ")))
            page.headings << line.mid(3).trimmed();
    return page;
}
} // namespace

const QVector<GuidePage>& GuidePages::All()
{
    static const QVector<GuidePage> pages{
        Read(QStringLiteral("README.md")), Read(QStringLiteral("first-app.md")),
        Read(QStringLiteral("first-web-app.md")), Read(QStringLiteral("release.md")),
        Read(QStringLiteral("take-back.md"))};
    return pages;
}

QString GuidePages::FolderAddress()
{
    return QStringLiteral("qrc:/guide/");
}
