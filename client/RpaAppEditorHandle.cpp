// SPDX-License-Identifier: Apache-2.0

#include "RpaAppEditorHandle.h"

#include "SnapshotWriting.h"

#include <OxBase/OxBlocker.h>
#include <OxHttp/HttpNotifyManager.h>
#include <RpaCore/RpaGlobalDataManager.h>
#include <RpaEditorCore/RpaSnapshotManager.h>
#include <RpaEditorLogic/RpaEditorLogic.h>
#include <RpaEditorLogic/RpaNotifyId.h>
#include <WbBaseUI/WbToast.h>
#include <WbFoundation/Utils.h>

using SnapshotWriting::IsConfirmed;
using SnapshotWriting::SnapshotManager;

namespace
{

void ShowError(const QString& text)
{
    WbToast::Show(text, ToastError);
}

void ShowSaved()
{
    WbToast::Show(QStringLiteral("保存成功"), ToastSuccess);
}

} // namespace

RpaAppEditorHandle::RpaAppEditorHandle(QObject* parent) : QObject(parent)
{
    qRegisterMetaType<RpaAppDataPtr>("RpaAppDataPtr");
    HttpNotifyManager::Instance()->AddObserver(this, {NotifySaveAppSnapshotInfo, NotifyUpdateAppSnapshotInfo,
                                                      NotifyDeleteAppSnapshotInfo, NotifyGetSnapshotList,
                                                      NotifyGetDevSnapshotData, NotifyGrayOrRelease});
}

RpaAppEditorHandle::~RpaAppEditorHandle()
{
    HttpNotifyManager::Instance()->RemoveAllMessage(this);
}

void RpaAppEditorHandle::SaveSnapshotAsync(const QString& snapshotId, RpaAppDataPtr appData)
{
    bEmitSaveFinished = false;
    SaveSnapshot(snapshotId, appData);
}

bool RpaAppEditorHandle::SaveSnapshotSync(const QString& snapshotId, RpaAppDataPtr appData)
{
    bEmitSaveFinished = true;
    if (!SaveSnapshot(snapshotId, appData))
        return true;
    OxBlocker blocker;
    connect(this, &QObject::destroyed, &blocker, &OxBlocker::Continue);
    connect(this, &RpaAppEditorHandle::SigSaveFinished, &blocker, &OxBlocker::ContinueWith);
    // The handle may be gone when the wait ends: nothing of it is touched from here on.
    blocker.Block(0);
    return blocker.GetResult().toBool();
}

bool RpaAppEditorHandle::SaveSnapshot(const QString& snapshotId, const RpaAppDataPtr& appData)
{
    if (bSaving || !appData)
        return false;
    appData->CheckPackageInfo();
    appData->SetModified(false);
    if (snapshotId.isEmpty()) {
        SendSave(appData);
    } else if (!SendUpdate(snapshotId, *appData)) {
        // A version that nobody knows cannot be written; the caller is told that the save was taken on.
        return true;
    }
    bSaving = true;
    return true;
}

bool RpaAppEditorHandle::SendUpdate(const QString& snapshotId, RpaAppData& appData)
{
    const RpaAppSnapshotPtr snapshot = SnapshotManager()->GetSnapshot(snapshotId);
    if (!snapshot)
        return false;
    SnapshotWriting::WriteContent(*snapshot, appData);
    updateIdentity = SnapshotWriting::CreateIdentity();
    const auto request = QSharedPointer<UpdateAppSnapshotInfoRequest>::create();
    request->SetSnapshotInfoPtr(snapshot);
    request->SetIdentity(updateIdentity);
    RpaEditorLogic::Instance()->UpdateAppSnapshotInfo(request);
    return true;
}

void RpaAppEditorHandle::SendSave(const RpaAppDataPtr& appData)
{
    const RpaAppSnapshotPtr snapshot = SnapshotManager()->CreateDefault(appData);
    saveIdentity = SnapshotWriting::CreateIdentity();
    const auto request = QSharedPointer<SaveAppSnapshotInfoRequest>::create();
    request->SetSnapshotInfoPtr(snapshot);
    request->SetIdentity(saveIdentity);
    RpaEditorLogic::Instance()->SaveAppSnapshotInfo(request);
}

void RpaAppEditorHandle::GetSnapshotList(const QString& appId)
{
    const auto request = QSharedPointer<GetSnapshotListRequest>::create();
    request->SetAppId(appId);
    RpaEditorLogic::Instance()->GetSnapshotList(request);
}

void RpaAppEditorHandle::GetSnapshotData(const QString& snapshotId)
{
    dataIdentity = SnapshotWriting::CreateIdentity();
    const auto request = QSharedPointer<GetDevSnapshotDataRequest>::create();
    request->SetSnapshotId(snapshotId);
    request->SetIdentity(dataIdentity);
    RpaEditorLogic::Instance()->GetDevSnapshotData(request);
}

void RpaAppEditorHandle::DeleteSnapshot(const QString& appId, const QString& snapshotId)
{
    const auto request = QSharedPointer<DeleteAppSnapshotInfoRequest>::create();
    request->SetAppId(appId);
    request->SetSnapshotId(snapshotId);
    RpaEditorLogic::Instance()->DeleteAppSnapshotInfo(request);
}

void RpaAppEditorHandle::GrayOrRelease(const QString& snapshotId, int publishType)
{
    const RpaAppSnapshotPtr snapshot = SnapshotManager()->GetSnapshot(snapshotId);
    if (!snapshot)
        return;
    const auto request = QSharedPointer<GrayOrReleaseRequest>::create();
    request->SetSnapshotId(snapshotId);
    request->SetAppId(snapshot->GetAppId());
    request->SetPublishType(publishType);
    RpaEditorLogic::Instance()->GrayOrRelease(request);
}

void RpaAppEditorHandle::OnHttpNotify(int notifyId, QSharedPointer<IHttpRequest> request,
                                      QSharedPointer<IHttpResponse> response)
{
    switch (notifyId) {
    case NotifySaveAppSnapshotInfo:
        OnSaved(request.data(), *response);
        break;
    case NotifyUpdateAppSnapshotInfo:
        OnUpdated(*request, *response);
        break;
    case NotifyDeleteAppSnapshotInfo:
        OnDeleted(request.data(), *response);
        break;
    case NotifyGetSnapshotList:
        emit SigGetSnapshotListFinished(response->IsSuccess(), response->GetErrorDesc());
        break;
    case NotifyGetDevSnapshotData:
        OnDataLoaded(request.data(), response.data());
        break;
    case NotifyGrayOrRelease:
        OnReleased(request.data(), response.data());
        break;
    default:
        break;
    }
}

void RpaAppEditorHandle::OnSaved(IHttpRequest* request, const IHttpResponse& response)
{
    if (request->GetIdentity() != saveIdentity)
        return;
    // Whoever hears of the new version may close the editor, and this handle with it.
    const QPointer<RpaAppEditorHandle> self(this);
    bSaving = false;
    bool success = false;
    if (response.IsSuccess()) {
        const auto* save = qobject_cast<SaveAppSnapshotInfoRequest*>(request);
        const RpaAppSnapshotPtr snapshot = save ? save->GetSnapshotInfoPtr() : RpaAppSnapshotPtr();
        emit SigSaveAppSnapshot(snapshot ? snapshot->GetId() : QString());
        success = true;
        ShowSaved();
    } else {
        ShowError(response.GetErrorDesc());
    }
    if (self && bEmitSaveFinished)
        emit SigSaveFinished(success);
}

void RpaAppEditorHandle::OnUpdated(const IHttpRequest& request, const IHttpResponse& response)
{
    if (request.GetIdentity() != updateIdentity)
        return;
    bSaving = false;
    const bool success = IsConfirmed(response);
    if (success)
        ShowSaved();
    else
        ShowError(response.GetErrorDesc());
    if (bEmitSaveFinished)
        emit SigSaveFinished(success);
}

void RpaAppEditorHandle::OnDeleted(IHttpRequest* request, const IHttpResponse& response)
{
    if (!IsConfirmed(response)) {
        ShowError(response.GetErrorDesc());
        return;
    }
    if (const auto* deletion = qobject_cast<DeleteAppSnapshotInfoRequest*>(request))
        emit SigSnapshotDeleted(deletion->GetSnapshotId());
}

void RpaAppEditorHandle::OnDataLoaded(IHttpRequest* request, IHttpResponse* response)
{
    const auto* load = qobject_cast<GetDevSnapshotDataRequest*>(request);
    if (!load || load->GetIdentity() != dataIdentity)
        return;
    const auto appData = RpaAppDataPtr::create();
    const auto* loaded = qobject_cast<GetDevSnapshotDataResponse*>(response);
    bool success = false;
    if (loaded && loaded->IsSuccess()) {
        appData->InitDefault();
        appData->Parse(loaded->GetAppData());
        appData->SetModified(false);
        const QString ownVersion = RpaGlobalDataManager::Instance()->GetApiVersion();
        success = Utils::CompareVersion(ownVersion, appData->GetVersion()) >= 0;
        if (!success)
            ShowError(QStringLiteral("当前版本过低，请更新为最新版本"));
    } else {
        ShowError(response->GetErrorDesc());
    }
    emit SigGetSnapshotData(success, load->GetSnapshotId(), appData);
}

void RpaAppEditorHandle::OnReleased(IHttpRequest* request, IHttpResponse* response)
{
    const auto* release = qobject_cast<GrayOrReleaseRequest*>(request);
    const auto* outcome = qobject_cast<GrayOrReleaseResponse*>(response);
    if (!release || !outcome)
        return;
    if (!outcome->IsSuccess() || outcome->GetResult() == 0) {
        ShowError(outcome->GetErrorDesc());
        return;
    }
    emit SigGrayOrReleaseFinished(release->GetAppId(), release->GetPublishType(), outcome->GetNeedTip());
}
