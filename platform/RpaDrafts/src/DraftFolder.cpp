// SPDX-License-Identifier: Apache-2.0

#include "DraftFile_p.h"
#include "DraftFolder_p.h"

#include <WbFoundation/JsonGuard.h>
#include <WbSystem/DurableFile.h>
#include <WbSystem/RegularFile.h>

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace
{
// Long enough that two never meet, short enough for any file system.
QString Mark(const QString& text)
{
    return QString::fromLatin1(
        QCryptographicHash::hash(text.toUtf8(), QCryptographicHash::Sha256).toHex().left(24));
}

QString AppStart(const QString& account, const QString& appId)
{
    return Mark(account + QChar(QChar::Null) + appId) + QLatin1Char('-');
}

QString VersionStart(const RpaDraft& draft)
{
    return AppStart(draft.account, draft.appId) + Mark(draft.versionId) + QLatin1Char('-');
}

QString Numbered(const QString& start, int number)
{
    return QStringLiteral("%1%2.draft").arg(start).arg(number);
}
} // namespace

QString DraftFolder::PathOf(const QString& name) const
{
    return path + QLatin1Char('/') + name;
}

// Somebody put it in the place of a draft, which can take no file any more.
bool DraftFolder::IsFolder(const QString& name) const
{
    const QFileInfo facts(PathOf(name));
    return facts.isDir() && !facts.isSymLink();
}

QStringList DraftFolder::NamesLike(const QString& start) const
{
    return QDir(path).entryList({start + QStringLiteral("*.draft")}, QDir::AllEntries | QDir::System,
                                QDir::Time | QDir::Reversed);
}

QStringList DraftFolder::NamesOf(const QString& account, const QString& appId) const
{
    return NamesLike(AppStart(account, appId));
}

QString DraftFolder::FreeName(const QString& start, QString* problem) const
{
    const QStringList taken = NamesLike(start);
    for (int number = 0; number < mostPerVersion; ++number)
        if (!taken.contains(Numbered(start, number)))
            return Numbered(start, number);
    return SetAside(taken.first(), problem).isEmpty() ? QString() : taken.first();
}

bool DraftFolder::Write(RpaDraft* draft, QString* problem) const
{
    if (draft->content.size() > DraftFile::largestContent)
        return DraftFile::Refuse(problem, QStringLiteral("应用超过 64 MB，无法保留草稿"));
    if (!QFileInfo(path).isDir() && !DurableFile::CreateFolder(path, problem))
        return false;
    const QString start = VersionStart(*draft);
    const QString before = IsFolder(draft->name) ? QString() : draft->name;
    const bool fits = before.startsWith(start);
    const QString name = fits ? before : FreeName(start, problem);
    if (name.isEmpty() || !DurableFile::Write(PathOf(name), DraftFile::Encode(draft), problem))
        return false;
    draft->name = name;
    return fits || before.isEmpty() || Remove(before, problem);
}

bool DraftFolder::Read(const QString& name, RpaDraft* draft, QString* problem) const
{
    if (ReadWhole(name, draft, problem))
        return true;
    QString obstacle;
    const QString kept = SetAside(name, &obstacle);
    *problem +=
        QStringLiteral("，") +
        (kept.isEmpty() ? obstacle : QStringLiteral("已另存为“%1”").arg(QDir::toNativeSeparators(kept)));
    return false;
}

bool DraftFolder::ReadWhole(const QString& name, RpaDraft* draft, QString* problem) const
{
    QFile file;
    QString obstacle;
    if (!RegularFile::Open(&file, PathOf(name), &obstacle))
        return DraftFile::Refuse(problem, QStringLiteral("草稿") + obstacle);
    if (file.size() > DraftFile::largestFile)
        return DraftFile::Refuse(problem, QStringLiteral("草稿文件过大"));
    draft->name = name;
    if (!DraftFile::Decode(file.read(DraftFile::largestFile + 1), draft, problem))
        return false;
    if (!name.startsWith(VersionStart(*draft)))
        return DraftFile::Refuse(problem, QStringLiteral("草稿属于其他账号、应用或版本"));
    QString reason;
    if (!JsonGuard::Check(draft->content, &reason))
        return DraftFile::Refuse(problem, QStringLiteral("草稿的内容无法读取：") + reason);
    return true;
}

bool DraftFolder::Remove(const QString& name, QString* problem) const
{
    return DurableFile::Remove(PathOf(name), problem);
}

QString DraftFolder::SetAside(const QString& name, QString* problem) const
{
    int number = 1;
    const auto keptPath = [&] { return PathOf(QStringLiteral("%1.kept%2").arg(name).arg(number)); };
    while (QFileInfo::exists(keptPath()) || QFileInfo(keptPath()).isSymLink())
        ++number;
    return DurableFile::Rename(PathOf(name), keptPath(), problem) ? keptPath() : QString();
}
