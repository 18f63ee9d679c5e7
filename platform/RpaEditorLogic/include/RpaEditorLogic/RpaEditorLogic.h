#pragma once

#include <RpaEditorLogic/RpaEditorLogicExport.h>
#include <RpaEditorLogic/SnapshotRequests.h>

#include <QSharedPointer>

#include <memory>

class RpaSnapshotManager;

// The version service as the editor sees it: takes requests, answers each exactly once through HttpNotifyManager.
// Where the server is and as whom to speak to it is told by the workstation (VersionServiceSettings). GUI thread only.
class RPAEDITORLOGIC_EXPORT RpaEditorLogic
{
public:
    static RpaEditorLogic* Instance();
    ~RpaEditorLogic();

    void SaveAppSnapshotInfo(const QSharedPointer<SaveAppSnapshotInfoRequest>& request);
    void UpdateAppSnapshotInfo(const QSharedPointer<UpdateAppSnapshotInfoRequest>& request);
    void DeleteAppSnapshotInfo(const QSharedPointer<DeleteAppSnapshotInfoRequest>& request);
    void GetSnapshotList(const QSharedPointer<GetSnapshotListRequest>& request);
    void GetDevSnapshotData(const QSharedPointer<GetDevSnapshotDataRequest>& request);
    void GrayOrRelease(const QSharedPointer<GrayOrReleaseRequest>& request);

    // The versions of the app being edited.
    RpaSnapshotManager* GetDevSnapshotManager() const;

private:
    RpaEditorLogic();

    class Private;
    const std::unique_ptr<Private> d;
};
