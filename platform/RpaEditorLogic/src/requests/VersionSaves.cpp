// SPDX-License-Identifier: Apache-2.0

#include "VersionSaves_p.h"

#include <RpaAppData/RpaAppExtendInfo.h>
#include <RpaAppData/RpaContentExcess.h>
#include <RpaAppData/RpaWrittenContent.h>
#include <RpaCore/RpaGlobalDataManager.h>
#include <RpaServiceClient/versions/CreateVersionRequest.h>
#include <RpaServiceClient/versions/ListVersionsRequest.h>
#include <RpaServiceClient/versions/OverwriteVersionRequest.h>
#include <WbFoundation/Utils.h>

namespace
{
// Content that was not sent is named: the author has to find what is too large in it.
QString FailureOf(const SaveOrder& order, const WbHttpAnswer& answer, bool isUsable)
{
    const bool isUnsent = answer.error == WbHttpError::BadRequest || answer.error == WbHttpError::TooLarge;
    const QString excess = isUnsent ? RpaContentExcess::Find(order.content.text.toUtf8()) : QString();
    return excess.isEmpty() ? ReasonOf(answer, isUsable) : excess + QStringLiteral("，没有保存");
}
} // namespace

SaveOrder VersionSaves::OrderOf(const RpaAppSnapshotPtr& snapshot)
{
    SaveOrder order;
    if (!snapshot)
        return order;
    order.appId = snapshot->GetAppId();
    order.versionId = snapshot->GetId();
    order.content = {snapshot->GetName(), snapshot->GetDesc(), snapshot->GetApiVersion(), QByteArray(),
                     snapshot->GetAppData()};
    order.source = RpaWrittenContent::FindWriter(order.content.text);
    order.isChosen = snapshot->IsNamed();
    snapshot->SetNamed(false); // the next save of the record is another act
    return order;
}

// What was saved is what its app data is based on from now on.
void VersionSaves::Rebase(const SaveOrder& order, const VersionServiceVersion& saved)
{
    if (!order.source)
        return;
    RpaContentOrigin origin = order.source->GetOrigin();
    origin.versionId = saved.id;
    origin.baseRevision = saved.revision;
    order.source->SetOrigin(origin);
}

AppAudience::Ticket VersionSaves::TicketOf(const SaveOrder& order) const
{
    AppAudience::Ticket ticket = context->TicketFor(order.appId, order.versionId);
    // Not by the version: an editor may show, and save into, rows of another app, and must hear that it may not.
    if (order.source)
        ticket.savers = context->audience.GetHolders(order.source->GetAppExtendInfo()->GetAppId());
    return ticket;
}

void VersionSaves::Save(const QSharedPointer<SaveAppSnapshotInfoRequest>& request)
{
    SaveOrder order = OrderOf(request->GetSnapshotInfoPtr());
    order.ticket = TicketOf(order);
    const QString refusal = ServiceRoute::IsValidId(order.appId) ? ContentRefusal(order)
                                                                 : QStringLiteral("应用信息不完整，无法保存");
    context->ledger.Begin(QString());
    context->SendOrRefuse(
        refusal, CreateVersionRequest{order.appId, order.content}.ToHttp(),
        [this, request, order](const TriedAnswer& answer) { OnCreated(request, order, answer); });
}

void VersionSaves::OnCreated(const QSharedPointer<SaveAppSnapshotInfoRequest>& request,
                             const SaveOrder& order, const TriedAnswer& answer)
{
    const auto saved = answer.IsSuccess() ? CreateVersionRequest::Read(answer) : std::nullopt;
    const bool isUsable = saved && saved->appId == order.appId;
    const QString failure = FailureOf(order, answer, isUsable);
    if (!failure.isEmpty() && MayBeOwn(order, answer)) {
        SendOverOwn(order, answer, [this, request](const SaveOrder& again, const TriedAnswer& end) {
            OnCreated(request, again, end);
        });
        return;
    }
    if (failure.isEmpty()) {
        request->GetSnapshotInfoPtr()->SetId(saved->id);
        context->TakeSaved(*saved);
        Rebase(order, *saved);
        context->inDoubt.Settle(order);
        context->ledger.Confirm(order.appId, saved->id, saved->revision, saved->sha256);
    } else {
        Fail(order, NotifySaveAppSnapshotInfo, answer, failure);
    }
    context->Notify(NotifySaveAppSnapshotInfo, order.ticket, request,
                    QSharedPointer<SnapshotResponse>::create(), failure);
    context->ledger.End();
}

void VersionSaves::Update(const QSharedPointer<UpdateAppSnapshotInfoRequest>& request)
{
    SaveOrder order = OrderOf(request->GetSnapshotInfoPtr());
    order.ticket = TicketOf(order);
    context->ledger.Begin(order.versionId);
    context->backoff.Restart(QStringLiteral("data/") + order.versionId);
    // Asked now, not when its turn comes: behind a load it would be held for a save over what that brought.
    const QString refusal = ContentRefusal(order);
    context->queue.Enqueue(order.versionId,
                           [this, request, order, refusal] { SendUpdate(request, order, refusal); });
}

void VersionSaves::SendUpdate(const QSharedPointer<UpdateAppSnapshotInfoRequest>& request, SaveOrder order,
                              const QString& refusal)
{
    order.base = BaseOf(order);
    context->SendOrRefuse(
        refusal.isEmpty() ? UpdateRefusal(order) : refusal,
        OverwriteVersionRequest{order.versionId, order.content, order.base}.ToHttp(),
        [this, request, order](const TriedAnswer& answer) { OnUpdated(request, order, answer); });
}

// The revision that the content is based on. Of content whose app data is not known, or that goes over a
// version which the author picked for it, the one that was loaded or saved here last.
int VersionSaves::BaseOf(const SaveOrder& order) const
{
    const RpaContentOrigin origin = order.source ? order.source->GetOrigin() : RpaContentOrigin();
    const bool isOwn = origin.versionId == order.versionId && origin.baseRevision > 0;
    return isOwn ? origin.baseRevision : context->manager.GetBaseRevision(order.versionId);
}

bool VersionSaves::IsOfAnotherApp(const SaveOrder& order) const
{
    const auto based = order.source ? context->manager.GetConfirmed(order.source->GetOrigin().versionId)
                                    : RpaAppSnapshotPtr();
    return based && !based->GetAppId().isEmpty() && based->GetAppId() != order.appId;
}

QString VersionSaves::ContentRefusal(const SaveOrder& order) const
{
    if (IsOfAnotherApp(order))
        return QStringLiteral("编辑器中的内容属于另一个应用，没有保存。请重新打开应用");
    if (order.versionId.isEmpty())
        return {};
    if (context->IsLoading(order.versionId))
        return QStringLiteral("版本“%1”正在打开，没有保存，以免覆盖其中的内容。请等它打开后再保存；"
                              "没有放弃的修改保留在草稿中")
            .arg(order.content.name);
    QString strange = context->restored.Refusal(order.versionId);
    const QString versionId = order.source ? order.source->GetOrigin().versionId : QString();
    if (order.isChosen || versionId.isEmpty() || versionId == order.versionId || !strange.isEmpty())
        return strange;
    return QStringLiteral("编辑器中的内容不是版本“%1”的内容，没有保存，以免覆盖它。请重新打开该版本，"
                          "或另存为；没有放弃的修改保留在草稿中")
        .arg(order.content.name);
}

QString VersionSaves::UpdateRefusal(const SaveOrder& order) const
{
    if (!ServiceRoute::IsValidId(order.versionId))
        return QStringLiteral("版本信息不完整，无法保存");
    const auto confirmed = context->manager.GetConfirmed(order.versionId);
    const QString ownApi = RpaGlobalDataManager::Instance()->GetApiVersion();
    // Content of a newer client was refused by the editor; what it holds is older and must not replace it.
    if (confirmed && Utils::CompareVersion(ownApi, confirmed->GetApiVersion()) < 0)
        return TooOldText();
    return context->restored.Refusal(order.versionId);
}

void VersionSaves::OnUpdated(const QSharedPointer<UpdateAppSnapshotInfoRequest>& request,
                             const SaveOrder& order, const TriedAnswer& answer)
{
    const auto saved = answer.IsSuccess() ? OverwriteVersionRequest::Read(answer) : std::nullopt;
    const bool isUsable = saved && saved->id == order.versionId && saved->revision > order.base;
    const QString failure = FailureOf(order, answer, isUsable);
    if (!failure.isEmpty() && MayBeOwn(order, answer)) {
        SendOverOwn(order, answer, [this, request](const SaveOrder& again, const TriedAnswer& end) {
            OnUpdated(request, again, end);
        });
        return;
    }
    if (failure.isEmpty()) {
        context->TakeSaved(*saved);
        Rebase(order, *saved);
        context->inDoubt.Settle(order);
        context->ledger.Confirm(order.appId, order.versionId, saved->revision, saved->sha256);
    } else {
        context->manager.Revert(order.versionId);
        Fail(order, NotifyUpdateAppSnapshotInfo, answer, failure);
    }
    context->queue.Finish(order.versionId);
    context->Notify(NotifyUpdateAppSnapshotInfo, order.ticket, request,
                    QSharedPointer<SnapshotResponse>::create(), failure);
    context->ledger.End();
}

void VersionSaves::Fail(const SaveOrder& order, int notifyId, const WbHttpAnswer& answer,
                        const QString& failure)
{
    if (ServiceAnswers::RefusalCode(answer) == QLatin1String("not-develop"))
        context->ledger.Refuse(order.appId, order.versionId, failure);
    else
        context->ledger.Fail(order.appId, order.versionId, failure);
    if (AppAudience::IsLeft(order.ticket, order.isChosen, notifyId))
        context->ledger.Abandon(order.appId, order.content.name, failure);
}

// What stands in the way of a save may be an earlier one of the same author, or an earlier try of this one.
bool VersionSaves::MayBeOwn(const SaveOrder& order, const TriedAnswer& answer)
{
    context->inDoubt.Note(order, answer);
    return !answer.isLookUp && context->inDoubt.MayExplain(order, answer);
}

void VersionSaves::SendOverOwn(const SaveOrder& order, const TriedAnswer& refusal, const Ended& ended)
{
    const auto decide = [this, order, refusal, ended](const TriedAnswer& list) {
        const auto records = list.IsSuccess() ? ListVersionsRequest::Read(list) : std::nullopt;
        if (!records) {
            // Whose change it is remains to be found out: nobody is blamed.
            TriedAnswer failed = list;
            failed.isLookUp = true;
            ended(order, failed);
            return;
        }
        const auto own = context->inDoubt.FindOwn(order, *records);
        context->inDoubt.Settle(order);
        if (!own) {
            TriedAnswer believed = refusal;
            believed.mayBeDone = false;
            ended(order, believed);
            return;
        }
        SaveOrder again = order;
        again.base = own->revision;
        context->manager.SetBaseRevision(own->id, own->revision);
        if (!order.versionId.isEmpty())
            Rebase(order, *own);
        context->transport.Send(OverwriteVersionRequest{own->id, again.content, again.base}.ToHttp(),
                                [again, ended](const TriedAnswer& answer) { ended(again, answer); });
    };
    context->transport.Send(ListVersionsRequest{order.appId}.ToHttp(), decide);
}
