#pragma once

#include <RpaCore/RpaAppSnapshot.h>
#include <RpaEditorCore/RpaEditorCoreExport.h>

#include <RpaAppData/RpaAppData.h>

#include <QHash>
#include <QString>
#include <QVector>

// The versions of the app being edited, in the server's order. Filled by the request library: an answer is already
// worked in when observers hear of it. GUI thread only.
class RPAEDITORCORE_EXPORT RpaSnapshotManager
{
public:
    int GetCount() const;

    // Number of versions in develop state.
    int GetDevelopCount() const;

    // Null when there is none. By id, versions that were listed once and are gone now are not found.
    RpaAppSnapshotPtr GetSnapshot(int index) const;
    RpaAppSnapshotPtr GetSnapshot(const QString& id) const;

    // Empty when the index is out of range.
    QString GetSnapshotId(int index) const;

    // A complete record for a new version of the app: name "版本N" with the first N that is free, develop state,
    // content, format version and saving user. It is not in the list until the server has confirmed it.
    RpaAppSnapshotPtr CreateDefault(const RpaAppDataPtr& appData) const;

    // Used by the request library.
    void SetSnapshots(const QVector<RpaAppSnapshotPtr>& snapshots);
    void AddOrReplace(const RpaAppSnapshotPtr& snapshot);
    void Remove(const QString& id);
    void Clear();

private:
    QVector<RpaAppSnapshotPtr> snapshots;
    QHash<QString, int> indexById;
    int developCount = 0;
};
