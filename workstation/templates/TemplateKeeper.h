#pragma once

#include <QFileSystemWatcher>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QThreadPool>
#include <QTimer>

// Looks after the templates of this workstation: keeps a copy of every one it ever saw, so that one that is
// overwritten or spoilt is not lost, and shows the editor only files that it can read without harm.
class TemplateKeeper : public QObject
{
    Q_OBJECT

public:
    // folders: where templates are kept and written. dataDir: where copies and lists of fit files go.
    TemplateKeeper(const QStringList& folders, const QString& dataDir, QObject* parent = nullptr);
    // Waits for a look that is under way.
    ~TemplateKeeper() override;

    // The folder itself while all files in it are fit; else one that holds the fit ones alone. Fit are
    // regular files of at most 64 MB, the first 500 by name.
    QString GetFitFolder(const QString& folder) const;

    // Where the copies are; each is named by the SHA-256 of its content.
    QString GetKeptFolder() const;

    // Looks at all folders, on a thread of its own, now and after each change in them. SigLooked tells the
    // end.
    void Look();

signals:
    // A template file that cannot be read or is empty, such as one whose writing failed.
    void SigUnreadable(const QString& fileName);
    void SigLooked();

private:
    const QStringList folders;
    const QString dataDir;
    QFileSystemWatcher watcher;
    QTimer settle;
    QThreadPool worker; // one thread: looks follow each other
};
