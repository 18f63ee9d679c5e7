// SPDX-License-Identifier: Apache-2.0

#include "BookmarkFile_p.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QSaveFile>
#include <QStandardPaths>
#include <QThreadPool>

namespace
{
constexpr qint64 bookmarkBytesAtMost = 1024 * 1024;

// One thread: the newest state is written last.
QThreadPool& BookmarkWriter()
{
    static QThreadPool pool;
    pool.setMaxThreadCount(1);
    return pool;
}

QString BookmarkPath(const QString& appId)
{
    const QByteArray name = QCryptographicHash::hash(appId.toUtf8(), QCryptographicHash::Sha256).toHex();
    return QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation) +
           QStringLiteral("/bookmarks/") + QString::fromLatin1(name);
}

void PutBookmarks(const QString& path, const QByteArray& text)
{
    QDir().mkpath(QFileInfo(path).path());
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly) && file.write(text) == text.size())
        file.commit();
}
} // namespace

QStringList BookmarkFile::Read(const QString& appId)
{
    Finish();
    QFile file(BookmarkPath(appId));
    if (appId.isEmpty() || !file.open(QIODevice::ReadOnly) || file.size() > bookmarkBytesAtMost)
        return {};
    return QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

void BookmarkFile::Write(const QString& appId, const QStringList& ids)
{
    if (appId.isEmpty())
        return;
    const QByteArray text = ids.join(QLatin1Char('\n')).toUtf8();
    BookmarkWriter().start([path = BookmarkPath(appId), text] { PutBookmarks(path, text); });
}

void BookmarkFile::Finish()
{
    BookmarkWriter().waitForDone();
}
