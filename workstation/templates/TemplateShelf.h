// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QHash>
#include <QList>
#include <QPair>
#include <QString>
#include <QStringList>

// Makes of a folder of templates one that the editor may read in a moment, whatever somebody put into the
// first: only templates that it can open, and in the place of each app a reference to a copy of it, which is
// read when the author has chosen. One thread at a time, except ReadContent().
class TemplateShelf
{
public:
    // dataDir: where copies ("templates-kept") and prepared folders ("templates-fit") go.
    explicit TemplateShelf(const QString& dataDir);

    static constexpr int mostTemplates = 500;

    // others: template files elsewhere, offered after those of the folder.
    // The prepared folder, which never changes again; another one when the templates are others. Empty when
    // it cannot be made. The one before stays until the next change. problems: what was found for the first
    // time and cannot be offered, in the user's words.
    QString Prepare(const QString& folder, const QStringList& others, QStringList* problems);

    QString GetKeptFolder() const { return keptFolder; }

    // The app of a reference; empty when its copy is gone or spoilt. Any thread.
    QByteArray ReadContent(const QByteArray& key) const;

private:
    using Files = QList<QPair<QString, QByteArray>>;

    // What is known of a file, as long as it looks the same.
    struct Entry
    {
        qint64 size = -1; // looked at again the next time
        QDateTime changed;
        QByteArray offered; // the prepared file; empty: not offered
    };

    struct Prepared
    {
        Files files;
        QString path;
        QString former;
    };

    Entry Look(const QString& path, QStringList* problems) const;
    void Offer(const QByteArray& file, const QString& name, Entry* entry, QStringList* problems) const;
    bool Keep(const QByteArray& file, const QByteArray& sha256) const;
    QString MakeFolder(const QString& stem, const Files& files);
    void RemoveFolder(const QString& path) const;

    const QString keptFolder;
    const QString fitFolder;
    QHash<QString, QHash<QString, Entry>> entries; // by folder and path
    QHash<QString, Prepared> prepared;
    int generation = 0;
};
