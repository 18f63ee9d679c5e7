// SPDX-License-Identifier: Apache-2.0

#include "VersionLoads_p.h"

#include <RpaCore/RpaGlobalDataManager.h>
#include <RpaEditorCore/RpaEditorNotify.h>
#include <RpaServiceClient/VersionServiceSettings.h>
#include <RpaServiceClient/versions/GetVersionDataRequest.h>
#include <RpaServiceClient/versions/ListVersionsRequest.h>
#include <WbFoundation/Utils.h>

#include <algorithm>

void VersionLoads::SetSpacing()
{
    const auto spacing = VersionServiceSettings::Instance()->GetRepeatSpacing();
    context->backoff.SetSpacing(spacing.first, spacing.longest);
}

void VersionLoads::List(const QSharedPointer<GetSnapshotListRequest>& request)
{
    const QString appId = request->GetAppId();
    context->audience.Open(appId);
    context->shownAppId = appId;
    const Order order{request, context->audience.Take(appId), ++lastSerial};
    SetSpacing();
    context->backoff.Run(QStringLiteral("list/") + appId, [this, order] { SendList(order); });
}

void VersionLoads::SendList(const Order& order)
{
    const QString appId = order.request->GetAppId();
    const QString refusal =
        ServiceRoute::IsValidId(appId) ? QString() : QStringLiteral("应用不存在，无法打开");
    const quint64 sent = context->journal.ListSent();
    context->SendOrRefuse(refusal, ListVersionsRequest{appId}.ToHttp(),
                          [this, order, sent](const WbHttpAnswer& answer) { OnList(order, sent, answer); });
}

void VersionLoads::OnList(const Order& order, quint64 sent, const WbHttpAnswer& answer)
{
    const QString appId = order.request->GetAppId();
    // The manager shows one app. Told as a success, this answer would pass the other app's versions off as
    // these.
    const bool isOvertaken = appId != context->shownAppId;
    const QString failure = isOvertaken ? QStringLiteral("期间打开了另一个应用，没有采用版本列表，请刷新")
                                        : ListFailure(order, sent, answer);
    context->journal.ListAnswered();
    context->backoff.Answered(QStringLiteral("list/") + appId, isOvertaken || failure.isEmpty());
    context->Notify(NotifyGetSnapshotList, order.ticket, order.request,
                    QSharedPointer<SnapshotResponse>::create(), failure);
}

QString VersionLoads::ListFailure(const Order& order, quint64 sent, const WbHttpAnswer& answer)
{
    const QString appId = order.request->GetAppId();
    const auto records = answer.IsSuccess() ? ListVersionsRequest::Read(answer) : std::nullopt;
    QString failure = ReasonOf(answer, records.has_value());
    if (!failure.isEmpty())
        return failure;
    const bool isForeign = std::any_of(records->cbegin(), records->cend(),
                                       [&](const auto& version) { return version.appId != appId; });
    if (isForeign)
        return QStringLiteral("服务器返回了另一个应用的版本，没有采用，请稍后重试");
    // An answer that was overtaken by a newer one of the same app has nothing to add.
    if (order.serial < appliedSerial)
        return {};
    appliedSerial = order.serial;
    QVector<RpaAppSnapshotPtr> snapshots;
    QVector<VersionServiceVersion> merged = context->journal.Merge(*records, appId, sent);
    context->restored.PutFirst(&merged);
    for (const VersionServiceVersion& version : qAsConst(merged)) {
        snapshots.append(SnapshotOf(version));
        context->manager.SetListedRevision(version.id, version.revision);
    }
    context->manager.SetSnapshots(snapshots);
    return {};
}

void VersionLoads::Data(const QSharedPointer<GetDevSnapshotDataRequest>& request)
{
    const QString id = request->GetSnapshotId();
    if (!context->audience.IsNotifying() && context->loads.isEmpty())
        emit RpaEditorNotify::Instance()->SigVersionPicked(id);
    SetSpacing();
    ++context->loads[id];
    const AppAudience::Ticket ticket = context->TicketFor(QString(), id);
    context->backoff.Run(QStringLiteral("data/") + id, [this, request, ticket, id] {
        context->queue.Enqueue(id, [this, request, ticket, id] {
            const QString refusal =
                ServiceRoute::IsValidId(id) ? QString() : QStringLiteral("版本不存在，无法打开");
            context->SendOrRefuse(
                refusal, GetVersionDataRequest{id}.ToHttp(),
                [this, request, ticket](const WbHttpAnswer& answer) { OnData(request, ticket, answer); });
        });
    });
}

// Why the content must not be opened; empty when it may. An editor shows a new app in the place of content
// that it cannot read, and its next save would put that over the content.
QString VersionLoads::ContentFailure(const QString& id, const AppOutline& outline) const
{
    // An app of a newer client is refused by the editor itself, which reads it first.
    if (outline.IsApp())
        return {};
    const QString ownApi = RpaGlobalDataManager::Instance()->GetApiVersion();
    const auto isNewer = [&ownApi](const QString& api) { return Utils::CompareVersion(ownApi, api) < 0; };
    // Content of another shape may tell its version elsewhere; then the list knows who wrote it.
    const auto listed = context->manager.GetConfirmed(id);
    if (isNewer(outline.version) || (listed && isNewer(listed->GetApiVersion())))
        return TooOldText();
    return QStringLiteral("该版本的内容无法识别，没有打开，服务器上的内容保持不变（%1）")
        .arg(outline.problem);
}

// Gives the restored work that takes the place of what was loaded.
std::optional<RestoredContent> VersionLoads::TakeLoaded(const QString& id, int revision,
                                                        const QByteArray& sha256)
{
    auto restored = context->restored.Take(id, revision, sha256);
    const bool hasBase = restored && restored->baseRevision > 0;
    context->manager.SetBaseRevision(id, hasBase ? restored->baseRevision : revision);
    context->inDoubt.SettleVersion(id);
    if (hasBase)
        context->inDoubt.NoteEarlier(id, restored->baseRevision, restored->origin.inDoubt);
    context->ledger.Reset(id, sha256);
    return restored;
}

void VersionLoads::OnData(const QSharedPointer<GetDevSnapshotDataRequest>& request,
                          const AppAudience::Ticket& ticket, const WbHttpAnswer& answer)
{
    const QString id = request->GetSnapshotId();
    const int revision = ServiceAnswers::RevisionOf(answer);
    QString failure = ReasonOf(answer, revision > 0);
    // Restored work is the author's own and was tried before it was offered.
    if (failure.isEmpty() && !context->restored.IsWaitingFor(id))
        failure = ContentFailure(id, answer.outline);
    auto response = QSharedPointer<GetDevSnapshotDataResponse>::create();
    std::optional<RestoredContent> restored;
    if (failure.isEmpty()) {
        restored = TakeLoaded(id, revision, answer.bodyDigest.toHex());
        response->SetAppData(restored ? restored->json : answer.body);
    }
    context->backoff.Answered(QStringLiteral("data/") + id, failure.isEmpty());
    context->queue.Finish(id);
    if (--context->loads[id] == 0)
        context->loads.remove(id);
    const RpaContentOrigin loaded{id, revision, QString()};
    const RpaContentDelivery delivery(response->GetAppData(), restored ? restored->origin : loaded,
                                      restored.has_value());
    response->SetAppData(delivery.GetContent());
    context->Notify(NotifyGetDevSnapshotData, ticket, request, response, failure);
}
