#include "VersionService_p.h"

#include <OxHttp/HttpNotifyManager.h>
#include <RpaCore/RpaGlobalDataManager.h>
#include <RpaEditorLogic/VersionServiceSettings.h>
#include <WbFoundation/Utils.h>

using namespace ServiceAnswers;

namespace
{
QString ReasonOf(const WbHttpAnswer& answer, bool isUsable)
{
    if (answer.IsSuccess())
        return isUsable ? QString() : UnusableText();
    return FailureText(answer);
}
} // namespace

void VersionService::SendOrRefuse(const QString& refusal, const WbHttpRequest& route, const Done& done)
{
    if (refusal.isEmpty()) {
        transport.Send(route, done);
        return;
    }
    WbHttpAnswer answer;
    answer.error = WbHttpError::BadRequest;
    answer.errorText = refusal;
    transport.AnswerLocally(answer, done);
}

void VersionService::Notify(int notifyId, const QSharedPointer<IHttpRequest>& request,
                            const QSharedPointer<SnapshotResponse>& response, const QString& failure)
{
    response->SetOutcome(failure.isEmpty(), failure);
    HttpNotifyManager::Instance()->Notify(notifyId, request, response);
}

void VersionService::TakeSaved(const VersionRecord& record)
{
    manager.SetBaseRevision(record.snapshot->GetId(), record.revision);
    TakeListed(record);
}

void VersionService::TakeListed(const VersionRecord& record)
{
    manager.SetListedRevision(record.snapshot->GetId(), record.revision);
    // A save of an app that is no longer shown must not appear among the versions of the one that is.
    if (newestListAppId.isEmpty() || record.snapshot->GetAppId() == newestListAppId)
        manager.AddOrReplace(record.snapshot);
    journal.Wrote(record);
}

void VersionService::Shutdown()
{
    spacer.Flush();
    transport.Shutdown();
}

void VersionService::Forget()
{
    Shutdown();
    manager.Forget();
    ledger.Forget();
    spacer.Forget();
    newestListAppId.clear();
}

SaveOrder VersionService::OrderOf(const RpaAppSnapshotPtr& snapshot)
{
    SaveOrder order;
    order.key = ServiceRoutes::NewKey();
    if (!snapshot)
        return order;
    order.appId = snapshot->GetAppId();
    order.versionId = snapshot->GetId();
    order.content = {snapshot->GetName(), snapshot->GetDesc(), snapshot->GetApiVersion(),
                     snapshot->GetAppData()};
    return order;
}

void VersionService::Save(const QSharedPointer<SaveAppSnapshotInfoRequest>& request)
{
    const SaveOrder order = OrderOf(request->GetSnapshotInfoPtr());
    const QString refusal =
        ServiceRoutes::IsValidId(order.appId) ? QString() : QStringLiteral("应用信息不完整，无法保存");
    ledger.Begin(QString());
    SendOrRefuse(refusal, ServiceRoutes::CreateVersion(order.appId, order.content, order.key),
                 [this, request, order](const WbHttpAnswer& answer) { OnCreated(request, order, answer); });
}

void VersionService::OnCreated(const QSharedPointer<SaveAppSnapshotInfoRequest>& request,
                               const SaveOrder& order, const WbHttpAnswer& answer)
{
    if (unsettled.MayExplain(order, answer)) {
        SendOverOwn(order, answer, [this, request](const SaveOrder& again, const WbHttpAnswer& end) {
            OnCreated(request, again, end);
        });
        return;
    }
    const auto record = answer.IsSuccess() ? ReadSaved(answer) : std::nullopt;
    const bool isUsable = record && record->snapshot->GetAppId() == order.appId;
    const QString failure = ReasonOf(answer, isUsable);
    if (failure.isEmpty()) {
        request->GetSnapshotInfoPtr()->SetId(record->snapshot->GetId());
        TakeSaved(*record);
        unsettled.Settle(order);
        ledger.Confirm(order.appId, record->snapshot->GetId(), record->revision, record->sha256);
    } else {
        unsettled.Note(order, answer);
        ledger.Fail(order.appId, QString(), failure);
    }
    Notify(NotifySaveAppSnapshotInfo, request, QSharedPointer<SnapshotResponse>::create(), failure);
    ledger.End();
}

void VersionService::Update(const QSharedPointer<UpdateAppSnapshotInfoRequest>& request)
{
    const SaveOrder order = OrderOf(request->GetSnapshotInfoPtr());
    ledger.Begin(order.versionId);
    spacer.Restart(QStringLiteral("data/") + order.versionId);
    queue.Enqueue(order.versionId, [this, request, order] { SendUpdate(request, order); });
}

void VersionService::SendUpdate(const QSharedPointer<UpdateAppSnapshotInfoRequest>& request, SaveOrder order)
{
    order.base = manager.GetBaseRevision(order.versionId);
    SendOrRefuse(UpdateRefusal(order),
                 ServiceRoutes::OverwriteVersion(order.versionId, order.content, order.base, order.key),
                 [this, request, order](const WbHttpAnswer& answer) { OnUpdated(request, order, answer); });
}

QString VersionService::UpdateRefusal(const SaveOrder& order) const
{
    if (!ServiceRoutes::IsValidId(order.versionId))
        return QStringLiteral("版本信息不完整，无法保存");
    const auto confirmed = manager.GetConfirmed(order.versionId);
    const QString ownApi = RpaGlobalDataManager::Instance()->GetApiVersion();
    // Content of a newer client was refused by the editor; what it holds is older and must not replace it.
    if (confirmed && Utils::CompareVersion(ownApi, confirmed->GetApiVersion()) < 0)
        return QStringLiteral("当前版本过低，请更新为最新版本");
    return {};
}

void VersionService::OnUpdated(const QSharedPointer<UpdateAppSnapshotInfoRequest>& request,
                               const SaveOrder& order, const WbHttpAnswer& answer)
{
    if (unsettled.MayExplain(order, answer)) {
        SendOverOwn(order, answer, [this, request](const SaveOrder& again, const WbHttpAnswer& end) {
            OnUpdated(request, again, end);
        });
        return;
    }
    const auto record = answer.IsSuccess() ? ReadSaved(answer) : std::nullopt;
    const bool isUsable =
        record && record->snapshot->GetId() == order.versionId && record->revision > order.base;
    const QString failure = ReasonOf(answer, isUsable);
    if (failure.isEmpty()) {
        TakeSaved(*record);
        unsettled.Settle(order);
        ledger.Confirm(order.appId, order.versionId, record->revision, record->sha256);
    } else {
        unsettled.Note(order, answer);
        manager.Revert(order.versionId);
        ledger.Fail(order.appId, order.versionId, failure);
    }
    queue.Finish(order.versionId);
    Notify(NotifyUpdateAppSnapshotInfo, request, QSharedPointer<SnapshotResponse>::create(), failure);
    ledger.End();
}

// What stands in the way of this save may be an earlier one of the same author: then it goes over that.
void VersionService::SendOverOwn(const SaveOrder& order, const WbHttpAnswer& refusal, const Ended& ended)
{
    const auto decide = [this, order, refusal, ended](const WbHttpAnswer& list) {
        const auto records = list.IsSuccess() ? ReadVersions(list.body) : std::nullopt;
        const auto own = records ? unsettled.FindOwn(order, *records) : std::nullopt;
        unsettled.Settle(order);
        if (!own) {
            ended(order, refusal);
            return;
        }
        SaveOrder again = order;
        again.base = own->revision;
        again.key = ServiceRoutes::NewKey();
        manager.SetBaseRevision(own->snapshot->GetId(), own->revision);
        transport.Send(
            ServiceRoutes::OverwriteVersion(own->snapshot->GetId(), again.content, again.base, again.key),
            [again, ended](const WbHttpAnswer& answer) { ended(again, answer); });
    };
    transport.Send(ServiceRoutes::ListVersions(order.appId), decide);
}

void VersionService::Delete(const QSharedPointer<DeleteAppSnapshotInfoRequest>& request)
{
    const QString id = request->GetSnapshotId();
    queue.Enqueue(id, [this, request, id] {
        const QString refusal =
            ServiceRoutes::IsValidId(id) ? QString() : QStringLiteral("版本不存在，无法删除");
        // The author decided by what the list shows, so the newest revision heard of is the one that is
        // meant.
        const int revision = manager.GetNewestRevision(id);
        SendOrRefuse(refusal, ServiceRoutes::DeleteVersion(id, revision, ServiceRoutes::NewKey()),
                     [this, request](const WbHttpAnswer& answer) { OnDeleted(request, answer); });
    });
}

void VersionService::OnDeleted(const QSharedPointer<DeleteAppSnapshotInfoRequest>& request,
                               const WbHttpAnswer& answer)
{
    const QString id = request->GetSnapshotId();
    // Gone already, by the service's own word: what was asked for is so.
    const bool isGone = answer.status == 404 && !RefusalCode(answer).isEmpty();
    const QString failure = isGone ? QString() : ReasonOf(answer, true);
    if (failure.isEmpty()) {
        manager.Remove(id);
        journal.Removed(id);
    }
    if (answer.error == WbHttpError::None && answer.status == 412)
        LearnRevisions(newestListAppId);
    queue.Finish(id);
    Notify(NotifyDeleteAppSnapshotInfo, request, QSharedPointer<SnapshotResponse>::create(), failure);
}

// The author was told that somebody else changed the version; whoever deletes it now means what is there now.
void VersionService::LearnRevisions(const QString& appId)
{
    if (!ServiceRoutes::IsValidId(appId))
        return;
    transport.Send(ServiceRoutes::ListVersions(appId), [this](const WbHttpAnswer& answer) {
        const auto records = answer.IsSuccess() ? ReadVersions(answer.body) : std::nullopt;
        for (const VersionRecord& record : records.value_or(QVector<VersionRecord>()))
            manager.SetListedRevision(record.snapshot->GetId(), record.revision);
    });
}

void VersionService::List(const QSharedPointer<GetSnapshotListRequest>& request)
{
    const QString appId = request->GetAppId();
    const quint64 serial = ++lastListSerial;
    newestListAppId = appId;
    const auto spacing = VersionServiceSettings::Instance()->GetRepeatSpacing();
    spacer.SetSpacing(spacing.first, spacing.longest);
    spacer.Run(QStringLiteral("list/") + appId, [this, request, appId, serial] {
        const QString refusal =
            ServiceRoutes::IsValidId(appId) ? QString() : QStringLiteral("应用不存在，无法打开");
        const quint64 ticket = journal.ListSent();
        SendOrRefuse(refusal, ServiceRoutes::ListVersions(appId),
                     [this, request, serial, ticket](const WbHttpAnswer& answer) {
                         OnList(request, serial, ticket, answer);
                     });
    });
}

void VersionService::OnList(const QSharedPointer<GetSnapshotListRequest>& request, quint64 serial,
                            quint64 ticket, const WbHttpAnswer& answer)
{
    const QString failure = ListFailure(*request, serial, ticket, answer);
    journal.ListAnswered();
    spacer.Answered(QStringLiteral("list/") + request->GetAppId(), failure.isEmpty());
    Notify(NotifyGetSnapshotList, request, QSharedPointer<SnapshotResponse>::create(), failure);
}

QString VersionService::ListFailure(const GetSnapshotListRequest& request, quint64 serial, quint64 ticket,
                                    const WbHttpAnswer& answer)
{
    const auto records = answer.IsSuccess() ? ReadVersions(answer.body) : std::nullopt;
    const QString failure = ReasonOf(answer, records.has_value());
    if (!failure.isEmpty())
        return failure;
    if (request.GetAppId() != newestListAppId)
        return QStringLiteral("已打开其他应用，版本列表不再需要");
    // An answer that was overtaken by a newer one of the same app has nothing to add.
    if (serial < appliedListSerial)
        return {};
    appliedListSerial = serial;
    QVector<RpaAppSnapshotPtr> snapshots;
    for (const VersionRecord& record : journal.Merge(*records, request.GetAppId(), ticket)) {
        snapshots.append(record.snapshot);
        manager.SetListedRevision(record.snapshot->GetId(), record.revision);
    }
    manager.SetSnapshots(snapshots);
    return {};
}

void VersionService::Data(const QSharedPointer<GetDevSnapshotDataRequest>& request)
{
    const QString id = request->GetSnapshotId();
    const auto spacing = VersionServiceSettings::Instance()->GetRepeatSpacing();
    spacer.SetSpacing(spacing.first, spacing.longest);
    spacer.Run(QStringLiteral("data/") + id, [this, request, id] {
        queue.Enqueue(id, [this, request, id] {
            const QString refusal =
                ServiceRoutes::IsValidId(id) ? QString() : QStringLiteral("版本不存在，无法打开");
            SendOrRefuse(refusal, ServiceRoutes::VersionData(id),
                         [this, request](const WbHttpAnswer& answer) { OnData(request, answer); });
        });
    });
}

void VersionService::OnData(const QSharedPointer<GetDevSnapshotDataRequest>& request,
                            const WbHttpAnswer& answer)
{
    const QString id = request->GetSnapshotId();
    const int revision = RevisionOf(answer);
    const QString failure = ReasonOf(answer, revision > 0);
    auto response = QSharedPointer<GetDevSnapshotDataResponse>::create();
    if (failure.isEmpty()) {
        response->SetAppData(answer.body);
        manager.SetBaseRevision(id, revision);
        unsettled.SettleVersion(id);
        ledger.Reset(id, answer.bodyDigest.toHex());
    }
    spacer.Answered(QStringLiteral("data/") + id, failure.isEmpty());
    queue.Finish(id);
    Notify(NotifyGetDevSnapshotData, request, response, failure);
}

void VersionService::Release(const QSharedPointer<GrayOrReleaseRequest>& request)
{
    const QString id = request->GetSnapshotId();
    // Asked now, not when its turn comes: behind a save that is under way it would release what nobody has
    // seen.
    const QString refusal = ReleaseRefusal(*request);
    queue.Enqueue(id, [this, request, id, refusal] {
        const int base = manager.GetBaseRevision(id);
        SendOrRefuse(
            refusal,
            ServiceRoutes::ReleaseVersion(id, request->GetPublishType(), base, ServiceRoutes::NewKey()),
            [this, request](const WbHttpAnswer& answer) { OnReleased(request, answer); });
    });
}

QString VersionService::ReleaseRefusal(const GrayOrReleaseRequest& request) const
{
    if (!ServiceRoutes::IsValidId(request.GetSnapshotId()))
        return QStringLiteral("版本不存在，无法发布");
    switch (ledger.GetOutcome(request.GetSnapshotId())) {
    case SaveLedger::Outcome::InFlight:
        return QStringLiteral("该版本正在保存，请稍后再操作");
    case SaveLedger::Outcome::Failed:
        return QStringLiteral("该版本上次保存未成功，请重新保存后再操作");
    case SaveLedger::Outcome::Unknown:
    case SaveLedger::Outcome::Confirmed:
        break;
    }
    return {};
}

void VersionService::OnReleased(const QSharedPointer<GrayOrReleaseRequest>& request,
                                const WbHttpAnswer& answer)
{
    const QString id = request->GetSnapshotId();
    const auto record = answer.IsSuccess() ? ReadRelease(answer.body) : std::nullopt;
    const QString failure = ReasonOf(answer, record && record->version.snapshot->GetId() == id);
    auto response = QSharedPointer<GrayOrReleaseResponse>::create();
    if (failure.isEmpty()) {
        response->SetResult(record->result);
        response->SetNeedTip(record->needTip);
        // A release that did not take effect was not held against our revision.
        if (record->result == 1)
            manager.SetBaseRevision(id, record->version.revision);
        TakeListed(record->version);
    }
    queue.Finish(id);
    response->SetOutcome(failure.isEmpty(),
                         failure.isEmpty() && record->result == 0 ? record->message : failure);
    HttpNotifyManager::Instance()->Notify(NotifyGrayOrRelease, request, response);
}
