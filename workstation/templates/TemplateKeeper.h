// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "TemplateShelf.h"

#include <QFileSystemWatcher>
#include <QHash>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QThreadPool>
#include <QTimer>

#include <functional>

// Looks after the templates of this workstation: keeps a copy of every one it ever saw, so that one that is
// overwritten or spoilt is not lost, and shows the editor folders that it can read in a moment and without
// harm. All of it happens on a thread of its own. GUI thread only.
class TemplateKeeper : public QObject
{
    Q_OBJECT

public:
    using Looked = std::function<void()>;

    // folders: where templates are kept and written. dataDir: where copies and prepared folders go.
    TemplateKeeper(const QStringList& folders, const QString& dataDir, QObject* parent = nullptr);
    // Waits for a look that is under way.
    ~TemplateKeeper() override;

    // Template files that lie elsewhere and are offered with those of the folder, from the next look on.
    void SetOthers(const QString& folder, const QStringList& files) { others.insert(folder, files); }

    // What the editor may read in the place of the folder: its templates as the last look found them, 500 at
    // most by name. Empty before the first look.
    QString GetFitFolder(const QString& folder) const { return fitFolders.value(folder); }

    // Where the copies are; each is named by the SHA-256 of its content.
    QString GetKeptFolder() const { return shelf.GetKeptFolder(); }

    // Looks at all folders, now and after each change in them. SigLooked tells the end.
    void Look();
    // Looks, and calls back once from the event loop: when that is done, or after a few seconds when a folder
    // does not answer. A later call takes the place of one that still waits.
    void LookThen(const Looked& looked);

signals:
    // A template that cannot be offered, and why, in the user's words; once per file and content.
    void SigProblem(const QString& text);
    // A template was chosen whose content cannot be read any more: the app starts as a new one does.
    void SigContentLost();
    void SigLooked();

private:
    void Done(const QHash<QString, QString>& fit, const QStringList& problems);
    void CallWaiting();
    QByteArray Fetch(const QByteArray& key);

    const QStringList folders;
    QHash<QString, QStringList> others;
    TemplateShelf shelf;
    QHash<QString, QString> fitFolders;
    QFileSystemWatcher watcher;
    QTimer settle;
    QTimer patience;
    Looked waiting;
    int looksUnderWay = 0;
    QThreadPool worker; // one thread: looks follow each other
};
