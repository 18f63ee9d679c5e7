// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaDrafts/RpaDraft.h>

#include <QString>
#include <QStringList>

// The files of the journal. A name tells account, app and version apart without giving them away, and a
// number tells drafts of the same version apart: one that the author has not decided about yet stays when new
// work begins. Any thread, but one at a time; the disk is waited for.
class DraftFolder
{
public:
    explicit DraftFolder(const QString& folderPath) : path(folderPath) {}

    // Drafts of one version; the oldest is set aside for one more.
    static constexpr int mostPerVersion = 5;

    // Names of the app's drafts, in no order.
    QStringList NamesOf(const QString& account, const QString& appId) const;

    // Under its name; under a free one when it has none, that of another version, which goes then, or one
    // that a folder took. Makes the journal's folder when that went away. Fills in name and digest.
    bool Write(RpaDraft* draft, QString* problem) const;

    // False with a problem, the file set aside, when it is no whole draft or not what its name says.
    bool Read(const QString& name, RpaDraft* draft, QString* problem) const;

    bool Remove(const QString& name, QString* problem) const;

    // Under a name that is no draft's any more, which is returned; empty with a problem when that fails.
    QString SetAside(const QString& name, QString* problem) const;

private:
    QString PathOf(const QString& name) const;
    bool IsFolder(const QString& name) const;
    QStringList NamesLike(const QString& start) const;
    QString FreeName(const QString& start, QString* problem) const;
    bool ReadWhole(const QString& name, RpaDraft* draft, QString* problem) const;

    const QString path;
};
