// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaAppData/RpaAppData.h>
#include <RpaCore/RpaAppSnapshot.h>
#include <RpaEditorCore/RpaEditorCoreExport.h>

#include <QHash>
#include <QString>
#include <QVector>

// The versions of the app being edited, in the server's order. Filled by the request library: an answer is
// already worked in when observers hear of it. It also remembers, for every version it ever heard of, the
// revisions that writes are based on, so that nobody's work is overwritten unseen. GUI thread only.
class RPAEDITORCORE_EXPORT RpaSnapshotManager
{
public:
    // How many versions are listed.
    int GetCount() const;

    // Number of versions in develop state.
    int GetDevelopCount() const { return developCount; }

    // Null when there is none. By id, a version that vanished from the list is still found: by somebody
    // else's hand, so that a save into it is sent and refused with a reason instead of being dropped, or
    // because the list shows another app now, whose editor must not cost this one its saves. One that was
    // removed here (Remove, Clear) is not.
    RpaAppSnapshotPtr GetSnapshot(int index) const;
    RpaAppSnapshotPtr GetSnapshot(const QString& id) const;

    // Empty when the index is out of range.
    QString GetSnapshotId(int index) const;

    // A complete record for a new version of the app: name "版本N" with the first N that is free, description
    // "默认开发版本", develop state, content, format version and saving user; the app data is marked with the
    // format version it is written in. The record is not in the list until the server has confirmed it. Null
    // without app data.
    RpaAppSnapshotPtr CreateDefault(const RpaAppDataPtr& appData) const;

    // --- Used by the request library ---

    // The whole list anew. Null records, records without id and repeated ids are left out.
    void SetSnapshots(const QVector<RpaAppSnapshotPtr>& snapshots);
    // In its place when its id is listed, else in front: the server lists the newest first.
    void AddOrReplace(const RpaAppSnapshotPtr& snapshot);
    void Remove(const QString& id);
    // Forgets the list; ids and revisions stay known.
    void Clear();
    // Forgets everything, ids and revisions included.
    void Forget();

    // The record as the server confirmed it last, without content; callers change listed records before a
    // save is confirmed. Null for an unknown id.
    RpaAppSnapshotPtr GetConfirmed(const QString& id) const;
    // Puts the listed record back to what the server confirmed last.
    void Revert(const QString& id);

    // Whether the id was ever listed, even if it is gone now.
    bool WasListed(const QString& id) const;

    // The revision that a write is to be based on: that of the content loaded or saved here last, or, when
    // the content was never touched here, the listed one. 0: unknown.
    int GetBaseRevision(const QString& id) const;
    // The newest revision heard of, by whatever answer. 0: unknown.
    int GetNewestRevision(const QString& id) const;
    // The content of this revision is now what the author sees or saved.
    void SetBaseRevision(const QString& id, int revision);
    // The revision was seen in a list; it does not move the base of content that was loaded before.
    void SetListedRevision(const QString& id, int revision);

private:
    struct Revisions
    {
        int base = 0;
        int newest = 0;
    };

    void Confirm(const RpaAppSnapshotPtr& snapshot);
    void RebuildIndex();
    QString FreeName() const;

    QVector<RpaAppSnapshotPtr> snapshots;
    QHash<QString, int> indexById;
    int developCount = 0;
    QHash<QString, RpaAppSnapshotPtr> vanished;
    QHash<QString, RpaAppSnapshot> confirmed;
    QHash<QString, Revisions> revisions;
};
