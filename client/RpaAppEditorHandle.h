// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <OxHttp/HttpObserverBase.h>
#include <RpaAppData/RpaAppData.h>

#include <QObject>
#include <QPointer>
#include <QString>

// The editor's gateway to the version service: sends its requests and turns each answer into one signal,
// showing the notices that belong to it. An answer to a save or a data request counts only when it belongs to
// the latest request of that kind made here; list, delete and release answers count whoever asked. GUI thread
// only.
class RpaAppEditorHandle : public QObject, public HttpObserverBase
{
    Q_OBJECT

public:
    explicit RpaAppEditorHandle(QObject* parent = nullptr);
    ~RpaAppEditorHandle() override;

    // Saves the app over the version, or as a new version when the id is empty. The modified mark is cleared
    // as the request is sent. Dropped without a message while another save of this handle is under way, and
    // without an app.
    void SaveSnapshotAsync(const QString& snapshotId, RpaAppDataPtr appData);

    // The same, and waits for the answer inside a nested event loop, without a time limit. True when the
    // server confirmed the save, and at once when another save is under way already or there is nothing to
    // save.
    bool SaveSnapshotSync(const QString& snapshotId, RpaAppDataPtr appData);

    // Asks for the versions of an app; answered by SigGetSnapshotListFinished.
    void GetSnapshotList(const QString& appId);

    // Asks for the content of a version; answered by SigGetSnapshotData.
    void GetSnapshotData(const QString& snapshotId);

    // Deletes a version without asking the user; answered by SigSnapshotDeleted.
    void DeleteSnapshot(const QString& appId, const QString& snapshotId);

    // Releases a version: publishType 1 gray, 2 online. Does nothing for an unknown version; answered by
    // SigGrayOrReleaseFinished.
    void GrayOrRelease(const QString& snapshotId, int publishType);

    void OnHttpNotify(int notifyId, QSharedPointer<IHttpRequest> request,
                      QSharedPointer<IHttpResponse> response) override;

signals:
    // A new version was saved; comes before the success notice.
    void SigSaveAppSnapshot(const QString& snapshotId);
    // Every list answer; the text is the answer's own, on success too.
    void SigGetSnapshotListFinished(bool bSuccess, const QString& errorDesc);
    // Every answer to the latest data request; the app data is never null.
    void SigGetSnapshotData(bool bSuccess, const QString& snapshotId, const RpaAppDataPtr& appDataPtr);
    // A release took effect.
    void SigGrayOrReleaseFinished(const QString& appId, int publishType, bool needTip);
    // A version was deleted, by whomever.
    void SigSnapshotDeleted(const QString& snapshotId);
    // A save was answered, unless the last save was asked for by SaveSnapshotAsync.
    void SigSaveFinished(bool bSuccess);

private:
    bool SaveSnapshot(const QString& snapshotId, const RpaAppDataPtr& appData);
    bool SendUpdate(const QString& snapshotId, RpaAppData& appData);
    void SendSave(const RpaAppDataPtr& appData);

    void OnSaved(IHttpRequest* request, const IHttpResponse& response);
    void OnUpdated(const IHttpRequest& request, const IHttpResponse& response);
    void OnDeleted(IHttpRequest* request, const IHttpResponse& response);
    void OnDataLoaded(IHttpRequest* request, IHttpResponse* response);
    void OnReleased(IHttpRequest* request, IHttpResponse* response);

    QPointer<QObject> context; // spare: no operation sets or reads it
    bool bEmitSaveFinished = false;
    bool bSaving = false;
    QString saveIdentity;
    QString updateIdentity;
    QString dataIdentity;
};
