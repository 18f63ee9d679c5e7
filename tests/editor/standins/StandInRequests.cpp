// SPDX-License-Identifier: Apache-2.0

#include "StandInRequests.h"

#include "CallLog.h"

#include <OxHttp/HttpNotifyManager.h>
#include <RpaEditorCore/RpaSnapshotManager.h>
#include <RpaEditorLogic/RpaEditorLogic.h>
#include <RpaEditorLogic/RpaNotifyId.h>
#include <RpaEditorLogic/SaveLedger.h>

#include <QHash>

class RpaEditorLogic::Private
{
public:
    RpaSnapshotManager versions;
    SaveLedger ledger;
};

namespace
{
using RequestPtr = QSharedPointer<IHttpRequest>;

QHash<int, QList<RequestPtr>>& Unanswered()
{
    static QHash<int, QList<RequestPtr>> requests;
    return requests;
}

void Keep(int notifyId, const RequestPtr& request, const QString& words)
{
    Unanswered()[notifyId].append(request);
    CallLog::Note(words);
}

template <typename Request>
QSharedPointer<Request> TakeOldest(int notifyId)
{
    QList<RequestPtr>& waiting = Unanswered()[notifyId];
    if (waiting.isEmpty())
        qFatal("nobody waits for an answer %d", notifyId);
    return waiting.takeFirst().objectCast<Request>();
}

RpaSnapshotManager* Versions()
{
    return RpaEditorLogic::Instance()->GetDevSnapshotManager();
}

void Notify(int notifyId, const RequestPtr& request, const QSharedPointer<IHttpResponse>& response)
{
    HttpNotifyManager::Instance()->Notify(notifyId, request, response);
}

QSharedPointer<SnapshotResponse> Outcome(bool ok, const QString& error)
{
    auto response = QSharedPointer<SnapshotResponse>::create();
    response->SetOutcome(ok, error);
    return response;
}
} // namespace

RpaEditorLogic::RpaEditorLogic() : d(std::make_unique<Private>()) {}

RpaEditorLogic::~RpaEditorLogic() = default;

RpaEditorLogic* RpaEditorLogic::Instance()
{
    static RpaEditorLogic instance;
    return &instance;
}

void RpaEditorLogic::SaveAppSnapshotInfo(const QSharedPointer<SaveAppSnapshotInfoRequest>& request)
{
    Keep(NotifySaveAppSnapshotInfo, request,
         QStringLiteral("save ") + request->GetSnapshotInfoPtr()->GetName());
}

void RpaEditorLogic::UpdateAppSnapshotInfo(const QSharedPointer<UpdateAppSnapshotInfoRequest>& request)
{
    Keep(NotifyUpdateAppSnapshotInfo, request,
         QStringLiteral("overwrite ") + request->GetSnapshotInfoPtr()->GetId());
}

void RpaEditorLogic::DeleteAppSnapshotInfo(const QSharedPointer<DeleteAppSnapshotInfoRequest>& request)
{
    Keep(NotifyDeleteAppSnapshotInfo, request,
         QStringLiteral("delete %1 of %2").arg(request->GetSnapshotId(), request->GetAppId()));
}

void RpaEditorLogic::GetSnapshotList(const QSharedPointer<GetSnapshotListRequest>& request)
{
    Keep(NotifyGetSnapshotList, request, QStringLiteral("list ") + request->GetAppId());
}

void RpaEditorLogic::GetDevSnapshotData(const QSharedPointer<GetDevSnapshotDataRequest>& request)
{
    Keep(NotifyGetDevSnapshotData, request, QStringLiteral("load ") + request->GetSnapshotId());
}

void RpaEditorLogic::GrayOrRelease(const QSharedPointer<GrayOrReleaseRequest>& request)
{
    Keep(NotifyGrayOrRelease, request,
         QStringLiteral("release %1 of %2 as %3")
             .arg(request->GetSnapshotId(), request->GetAppId())
             .arg(request->GetPublishType()));
}

RpaSnapshotManager* RpaEditorLogic::GetDevSnapshotManager() const
{
    return &d->versions;
}

SaveLedger* RpaEditorLogic::GetSaveLedger() const
{
    return &d->ledger;
}

void RpaEditorLogic::Restore(const RestoredContent&) {}

void RpaEditorLogic::ForgetRestored() {}

void RpaEditorLogic::Shutdown() {}

void RpaEditorLogic::Forget() {}

void StandInRequests::Reset()
{
    Unanswered().clear();
    Versions()->Forget();
    CallLog::Take();
}

RpaAppSnapshotPtr StandInRequests::Version(const QString& id, const QString& name, AppSnapshotState state,
                                           const QString& description)
{
    auto version = RpaAppSnapshotPtr::create();
    version->SetId(id);
    version->SetAppId(QStringLiteral("app1"));
    version->SetName(name);
    version->SetState(state);
    version->SetDesc(description);
    return version;
}

void StandInRequests::AnswerList(const QVector<RpaAppSnapshotPtr>& versions)
{
    const auto request = TakeOldest<GetSnapshotListRequest>(NotifyGetSnapshotList);
    Versions()->SetSnapshots(versions);
    Notify(NotifyGetSnapshotList, request, Outcome(true, QString()));
}

void StandInRequests::FailList(const QString& error)
{
    Notify(NotifyGetSnapshotList, TakeOldest<GetSnapshotListRequest>(NotifyGetSnapshotList),
           Outcome(false, error));
}

void StandInRequests::AnswerData(const QByteArray& json)
{
    const auto response = QSharedPointer<GetDevSnapshotDataResponse>::create();
    response->SetOutcome(true, QString());
    response->SetAppData(json);
    Notify(NotifyGetDevSnapshotData, TakeOldest<GetDevSnapshotDataRequest>(NotifyGetDevSnapshotData),
           response);
}

void StandInRequests::FailData(const QString& error)
{
    Notify(NotifyGetDevSnapshotData, TakeOldest<GetDevSnapshotDataRequest>(NotifyGetDevSnapshotData),
           Outcome(false, error));
}

void StandInRequests::AnswerOverwrite(bool ok, const QString& error)
{
    Notify(NotifyUpdateAppSnapshotInfo, TakeOldest<UpdateAppSnapshotInfoRequest>(NotifyUpdateAppSnapshotInfo),
           Outcome(ok, error));
}

void StandInRequests::AnswerDeletion(bool ok, const QString& error)
{
    const auto request = TakeOldest<DeleteAppSnapshotInfoRequest>(NotifyDeleteAppSnapshotInfo);
    if (ok)
        Versions()->Remove(request->GetSnapshotId());
    Notify(NotifyDeleteAppSnapshotInfo, request, Outcome(ok, error));
}

void StandInRequests::AnswerSave(const QString& newId)
{
    const auto request = TakeOldest<SaveAppSnapshotInfoRequest>(NotifySaveAppSnapshotInfo);
    request->GetSnapshotInfoPtr()->SetId(newId);
    Versions()->AddOrReplace(request->GetSnapshotInfoPtr());
    Notify(NotifySaveAppSnapshotInfo, request, Outcome(true, QString()));
}

void StandInRequests::AnswerSaveUnlisted(const QString& newId)
{
    const auto request = TakeOldest<SaveAppSnapshotInfoRequest>(NotifySaveAppSnapshotInfo);
    request->GetSnapshotInfoPtr()->SetId(newId);
    Notify(NotifySaveAppSnapshotInfo, request, Outcome(true, QString()));
}

void StandInRequests::AnswerRelease(int result, bool needTip)
{
    const auto response = QSharedPointer<GrayOrReleaseResponse>::create();
    response->SetOutcome(true, QString());
    response->SetResult(result);
    response->SetNeedTip(needTip);
    Notify(NotifyGrayOrRelease, TakeOldest<GrayOrReleaseRequest>(NotifyGrayOrRelease), response);
}

RpaAppSnapshotPtr StandInRequests::Overwritten()
{
    const QList<RequestPtr> waiting = Unanswered().value(NotifyUpdateAppSnapshotInfo);
    return waiting.isEmpty()
               ? RpaAppSnapshotPtr()
               : waiting.first().objectCast<UpdateAppSnapshotInfoRequest>()->GetSnapshotInfoPtr();
}

RpaAppDataPtr StandInRequests::ContentOf(const RpaAppSnapshotPtr& version)
{
    auto content = RpaAppDataPtr::create();
    if (version)
        content->Parse(version->GetAppData().toUtf8());
    return content;
}

void StandInRequests::AnswerForeignDeletion(const QString& versionId)
{
    const auto request = QSharedPointer<DeleteAppSnapshotInfoRequest>::create();
    request->SetSnapshotId(versionId);
    Versions()->Remove(versionId);
    Notify(NotifyDeleteAppSnapshotInfo, request, Outcome(true, QString()));
}
