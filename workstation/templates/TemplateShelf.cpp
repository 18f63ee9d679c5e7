// SPDX-License-Identifier: Apache-2.0

#include "TemplateShelf.h"

#include "TemplateFile.h"

#include <RpaAppData/RpaContentReference.h>
#include <WbSystem/RegularFile.h>

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace
{
QByteArray Sha256(const QByteArray& bytes)
{
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex();
}

QByteArray ReadAll(const QString& path, QString* problem)
{
    QFile file;
    return RegularFile::Open(&file, path, problem) ? file.read(TemplateFile::LargestBytes() + 1)
                                                   : QByteArray();
}

bool WriteAll(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush();
}

QFileInfoList Find(const QString& folder, const QStringList& others)
{
    QFileInfoList found =
        QDir(folder).entryInfoList(QDir::Files | QDir::Hidden | QDir::NoSymLinks, QDir::Name);
    for (const QString& path : others) {
        const QFileInfo file(path);
        if (file.isFile() && !file.isSymLink() && !found.contains(file))
            found << file;
    }
    return found;
}

// Files of several folders may have one name.
QString UnusedName(const QString& name, const QList<QPair<QString, QByteArray>>& files)
{
    const auto isUsed = [&files](const QString& wanted) {
        return std::any_of(files.cbegin(), files.cend(),
                           [&wanted](const auto& file) { return file.first == wanted; });
    };
    QString unused = name;
    for (int i = 2; isUsed(unused); ++i)
        unused = QStringLiteral("%1-%2").arg(name).arg(i);
    return unused;
}

QString Said(const QString& name, const QString& why)
{
    return QStringLiteral("模板文件“%1”%2，不会出现在模板列表中").arg(name, why);
}
} // namespace

TemplateShelf::TemplateShelf(const QString& dataDir)
    : keptFolder(dataDir + QStringLiteral("/templates-kept")),
      fitFolder(dataDir + QStringLiteral("/templates-fit"))
{
}

QString TemplateShelf::Prepare(const QString& folder, const QStringList& others, QStringList* problems)
{
    const QHash<QString, Entry> before = entries.take(folder);
    Files files;
    for (const QFileInfo& file : Find(folder, others)) {
        const Entry known = before.value(file.filePath());
        const bool isSame = known.size == file.size() && known.changed == file.lastModified();
        const Entry entry = isSame ? known : Look(file.filePath(), problems);
        entries[folder].insert(file.filePath(), entry);
        if (!entry.offered.isEmpty() && files.size() < mostTemplates)
            files.append({UnusedName(file.fileName(), files), entry.offered});
    }

    Prepared& place = prepared[folder];
    if (!place.path.isEmpty() && place.files == files)
        return place.path;
    QString path = MakeFolder(QFileInfo(folder).fileName(), files);
    if (path.isEmpty()) {
        *problems << QStringLiteral("模板暂时无法提供，磁盘可能已满");
        return {};
    }
    RemoveFolder(place.former);
    place = {files, path, place.path};
    return path;
}

TemplateShelf::Entry TemplateShelf::Look(const QString& path, QStringList* problems) const
{
    const QFileInfo facts(path);
    Entry entry;
    entry.size = facts.size();
    entry.changed = facts.lastModified();
    const QString name = facts.fileName();
    if (entry.size > TemplateFile::LargestBytes()) {
        *problems << Said(name, QStringLiteral("过大"));
        return entry;
    }
    QString problem;
    const QByteArray file = ReadAll(path, &problem);
    if (!problem.isEmpty() || file.isEmpty())
        *problems << Said(name, problem.isEmpty() ? QStringLiteral("没有内容，请重新生成") : problem);
    else
        Offer(file, name, &entry, problems);
    return entry;
}

// The same file with a reference in the place of the app.
void TemplateShelf::Offer(const QByteArray& file, const QString& name, Entry* entry,
                          QStringList* problems) const
{
    const QByteArray sha256 = Sha256(file);
    const bool isKept = Keep(file, sha256);
    TemplateRecord record;
    QString problem;
    if (!TemplateFile::Decode(file, &record, &problem)) {
        if (!problem.isEmpty())
            *problems << Said(name, QStringLiteral("的内容无法读取（%1）").arg(problem));
        return;
    }
    if (!isKept) {
        *problems << Said(name, QStringLiteral("无法复制，磁盘可能已满"));
        entry->size = -1;
        return;
    }
    if (!record.appData.isEmpty())
        record.appData = RpaContentReference::Make(sha256);
    entry->offered = TemplateFile::Encode(record);
}

bool TemplateShelf::Keep(const QByteArray& file, const QByteArray& sha256) const
{
    const QString kept = keptFolder + QLatin1Char('/') + QString::fromLatin1(sha256);
    if (QFileInfo(kept).size() == file.size())
        return true;
    const QString unfinished = kept + QStringLiteral(".tmp");
    QDir().mkpath(keptFolder);
    QFile::remove(kept);
    if (WriteAll(unfinished, file) && QFile::rename(unfinished, kept))
        return true;
    QFile::remove(unfinished);
    return false;
}

QString TemplateShelf::MakeFolder(const QString& stem, const Files& files)
{
    if (generation == 0)
        QDir(fitFolder).removeRecursively(); // of the run before
    const QString path = QStringLiteral("%1/%2-%3").arg(fitFolder, stem).arg(++generation);
    bool isWhole = QDir().mkpath(path);
    for (const auto& [name, content] : files)
        isWhole = isWhole && WriteAll(path + QLatin1Char('/') + name, content);
    if (!isWhole)
        RemoveFolder(path);
    return isWhole ? path : QString();
}

// An empty path would mean the folder that the program runs in, with everything in it.
void TemplateShelf::RemoveFolder(const QString& path) const
{
    if (path.startsWith(fitFolder + QLatin1Char('/')))
        QDir(path).removeRecursively();
}

QByteArray TemplateShelf::ReadContent(const QByteArray& key) const
{
    QString problem;
    TemplateRecord record;
    const QByteArray file = ReadAll(keptFolder + QLatin1Char('/') + QString::fromLatin1(key), &problem);
    const bool isWhole = Sha256(file) == key && TemplateFile::Decode(file, &record, &problem);
    return isWhole ? record.appData : QByteArray();
}
