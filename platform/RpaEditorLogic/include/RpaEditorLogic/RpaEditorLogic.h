// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaEditorLogic/RestoredContent.h>
#include <RpaEditorLogic/RpaEditorLogicExport.h>
#include <RpaEditorLogic/SnapshotRequests.h>
#include <RpaEditorLogic/VersionAct.h>

#include <QSharedPointer>
#include <QVector>

#include <memory>

class IReleaseReview;
class RpaSnapshotManager;
class SaveLedger;

// The version service as the editor sees it: takes requests, answers each exactly once through
// HttpNotifyManager. Where the server is and as whom to speak to it is told by the workstation
// (VersionServiceSettings). GUI thread only.
//
// - An answer is never delivered inside the operation that sent its request.
// - Requests for one version are sent and answered in the order they were made; a version's save is based on
//   what the save before it made, and its load sees them. Between versions, and for lists and new versions,
//   answers come in the order in which the server gives them; a list never undoes a write that was confirmed
//   while it was under way.
// - When an answer is delivered, the snapshot manager and the save ledger already show its outcome.
// - The records given in requests are read at once; changing them later changes nothing that is under way. A
//   refused overwrite puts the listed record back to what the server has.
// - An overwrite is refused while a load of its version is asked for and not handed out yet, and when its
//   content (RpaWrittenContent) was loaded from, or saved to, another version: an editor names the version
//   that it is on the way to. It is not refused when the record was named for it (RpaAppSnapshot::IsNamed):
//   then the author picked the version for this content. Content of one app is never saved into another one.
//   Content of no version, or whose app data is not known, may go anywhere.
// - An overwrite goes over the revision that its content was loaded from or saved as, when that is known.
// - A load that is asked for again and again is spaced (VersionServiceSettings::RepeatSpacing).
// - A release is refused while the last save of its version is in flight or failed, and when the content that
//   the server has of the version could not run: the check before a run finds something in a process that a
//   button starts. The version stays as it is. Apps in Python are not checked.
// - An answer reaches only those whom it is for: never an editor that was made after the request; a list, a
//   deletion, a release and loaded content only the editor of the app. An editor is an observer that is a
//   QObject and hears lists; its app is the one whose list it asked for. A save is answered to the editors that ever
//   had the app of its content, and to all when that app is not known. What nobody is left to hear is
//   worked in all the same. A list that was overtaken by that of another app fails.
// - When the application object goes, whatever is outstanding is answered as failed.
//
// Two editors at once: requests do not say who made them, so it is assumed that editors ask for their first
// list in the order in which they were made; whoever makes two opens them in that order. The snapshot manager
// shows the app whose list was asked for last, to both: an editor of the other app that rebuilds its
// drop-down shows those rows until it is refreshed. A row picked there is not opened, and no content is saved
// into another app. An editor that is given another app goes on with the version it had open, if the manager
// knows that; a host makes a fresh editor for each app.
class RPAEDITORLOGIC_EXPORT RpaEditorLogic
{
public:
    // The one of the process.
    static RpaEditorLogic* Instance();
    ~RpaEditorLogic();

    // Each takes a request and is answered as said above; what a request is for stands with its class.
    void SaveAppSnapshotInfo(const QSharedPointer<SaveAppSnapshotInfoRequest>& request);
    void UpdateAppSnapshotInfo(const QSharedPointer<UpdateAppSnapshotInfoRequest>& request);
    void DeleteAppSnapshotInfo(const QSharedPointer<DeleteAppSnapshotInfoRequest>& request);
    void GetSnapshotList(const QSharedPointer<GetSnapshotListRequest>& request);
    void GetDevSnapshotData(const QSharedPointer<GetDevSnapshotDataRequest>& request);
    void GrayOrRelease(const QSharedPointer<GrayOrReleaseRequest>& request);

    // Asked before each release; null: nobody is. Must outlive the releases that it is asked about.
    void SetReleaseReview(IReleaseReview* review);

    // The versions of the app being edited.
    RpaSnapshotManager* GetDevSnapshotManager() const;

    // What became of the saves.
    SaveLedger* GetSaveLedger() const;

    // Deletions and releases of the app that are not answered yet, oldest first: an editor that goes hears no
    // more of them.
    QVector<VersionAct> GetActsUnderWay(const QString& appId) const;

    // The next load of the version brings this content instead of its own, marked as modified; until then the
    // version is listed first, so that an editor opens it. A save of it is refused when the version is not at
    // the base revision any more: what is newer is never replaced.
    void Restore(const RestoredContent& content);
    // What was not loaded by now is not restored any more.
    void ForgetRestored();

    // Answers everything outstanding as failed, now. Later requests are sent as ever.
    void Shutdown();

    // Shuts down and forgets all that is known of versions: before another service is used, whose ids and
    // revisions mean something else. A restart of the same service needs no such thing, even at another
    // address.
    void Forget();

private:
    RpaEditorLogic();

    class Private;
    const std::unique_ptr<Private> d;
};
