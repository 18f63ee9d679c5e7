#include "TemplateKeeper.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <chrono>
#include <filesystem>

namespace
{
constexpr qint64 largestTemplate = 64LL * 1024 * 1024;
constexpr int mostTemplates = 500;
// A file that is being written changes several times.
constexpr auto settleTime = std::chrono::milliseconds(300);

bool IsFit(const QFileInfo& file)
{
    return file.isFile() && !file.isSymLink() && file.size() <= largestTemplate;
}

QFileInfoList EntriesOf(const QString& folder)
{
    return QDir(folder).entryInfoList(QDir::AllEntries | QDir::System | QDir::Hidden | QDir::NoDotAndDotDot,
                                      QDir::Name);
}

// A link shows the same bytes without copying them.
bool ShowIn(const QString& folder, const QFileInfo& file)
{
    std::error_code error;
    // UTF-16 is what every system understands: a narrow name would be read in Windows' own code page.
    std::filesystem::create_hard_link(file.filePath().toStdU16String(),
                                      (folder + QLatin1Char('/') + file.fileName()).toStdU16String(), error);
    return !error;
}

bool Keep(const QString& name, const QString& keptFolder)
{
    QFile file(name);
    QCryptographicHash hash(QCryptographicHash::Sha256);
    if (!file.open(QIODevice::ReadOnly) || file.size() == 0 || !hash.addData(&file)) {
        return false;
    }
    const QString kept = keptFolder + QLatin1Char('/') + QString::fromLatin1(hash.result().toHex());
    return QFile::exists(kept) || file.copy(kept);
}

// The names of the files that could not be kept.
QStringList KeepAll(const QStringList& folders, const QString& keptFolder)
{
    QStringList unreadable;
    QDir().mkpath(keptFolder);
    for (const QString& folder : folders) {
        int count = 0;
        for (const QFileInfo& file : EntriesOf(folder)) {
            if (IsFit(file) && count++ < mostTemplates && !Keep(file.filePath(), keptFolder)) {
                unreadable << file.fileName();
            }
        }
    }
    return unreadable;
}
} // namespace

TemplateKeeper::TemplateKeeper(const QStringList& places, const QString& data, QObject* parent)
    : QObject(parent), folders(places), dataDir(data)
{
    settle.setSingleShot(true);
    worker.setMaxThreadCount(1);
    connect(&watcher, &QFileSystemWatcher::directoryChanged, this, [this] { settle.start(settleTime); });
    connect(&settle, &QTimer::timeout, this, &TemplateKeeper::Look);
}

TemplateKeeper::~TemplateKeeper()
{
    worker.waitForDone();
}

QString TemplateKeeper::GetKeptFolder() const
{
    return dataDir + QStringLiteral("/templates-kept");
}

QString TemplateKeeper::GetFitFolder(const QString& folder) const
{
    const QFileInfoList entries = EntriesOf(folder);
    if (entries.size() <= mostTemplates && std::all_of(entries.begin(), entries.end(), &IsFit)) {
        return folder;
    }
    const QString fit = dataDir + QStringLiteral("/templates-fit/") + QFileInfo(folder).fileName();
    QDir(fit).removeRecursively();
    QDir().mkpath(fit);
    int count = 0;
    for (const QFileInfo& file : entries) {
        if (IsFit(file) && count < mostTemplates && ShowIn(fit, file)) {
            ++count;
        }
    }
    return fit;
}

void TemplateKeeper::Look()
{
    for (const QString& folder : folders) {
        if (!watcher.directories().contains(folder)) {
            watcher.addPath(folder);
        }
    }
    worker.start([this, places = folders, kept = GetKeptFolder()] {
        const QStringList unreadable = KeepAll(places, kept);
        QMetaObject::invokeMethod(this, [this, unreadable] {
            for (const QString& file : unreadable) {
                emit SigUnreadable(file);
            }
            emit SigLooked();
        });
    });
}
