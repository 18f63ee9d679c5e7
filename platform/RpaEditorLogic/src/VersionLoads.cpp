#include "ServiceRoutes_p.h"
#include "VersionLoads_p.h"

#include <RpaCore/RpaGlobalDataManager.h>
#include <RpaEditorLogic/VersionServiceSettings.h>
#include <WbFoundation/Utils.h>

using namespace ServiceAnswers;

VersionLoads::VersionLoads(VersionContext* sharedContext) : context(sharedContext) {}

void VersionLoads::SetSpacing()
{
    const auto spacing = VersionServiceSettings::Instance()->GetRepeatSpacing();
    context->spacer.SetSpacing(spacing.first, spacing.longest);
}

void VersionLoads::List(const ListRequest& request)
{
    const QString appId = request->GetAppId();
    const quint64 serial = ++lastSerial;
    context->shownAppId = appId;
    isNewestAnswered = false;
    SetSpacing();
    context->spacer.Run(QStringLiteral("list/") + appId,
                        [this, request, serial] { SendList(request, serial); });
}

void VersionLoads::SendList(const ListRequest& request, quint64 serial)
{
    const QString appId = request->GetAppId();
    const QString refusal =
        ServiceRoutes::IsValidId(appId) ? QString() : QStringLiteral("应用不存在，无法打开");
    const quint64 ticket = context->journal.ListSent();
    context->SendOrRefuse(refusal, ServiceRoutes::ListVersions(appId),
                          [this, request, serial, ticket](const WbHttpAnswer& answer) {
                              OnList(request, serial, ticket, answer);
                          });
}

void VersionLoads::OnList(const ListRequest& request, quint64 serial, quint64 ticket,
                          const WbHttpAnswer& answer)
{
    const bool isOvertaken = request->GetAppId() != context->shownAppId;
    const QString failure = isOvertaken ? QString() : ListFailure(*request, serial, ticket, answer);
    context->journal.ListAnswered();
    context->spacer.Answered(QStringLiteral("list/") + request->GetAppId(), failure.isEmpty());
    if (isOvertaken) {
        overtaken.append(request);
    } else {
        if (serial == lastSerial) {
            isNewestAnswered = true;
            newestFailure = failure;
        }
        context->Notify(NotifyGetSnapshotList, request, QSharedPointer<SnapshotResponse>::create(), failure);
    }
    if (isNewestAnswered)
        NotifyOvertaken();
}

void VersionLoads::NotifyOvertaken()
{
    QVector<ListRequest> due;
    due.swap(overtaken);
    const QString failure = newestFailure;
    for (const ListRequest& request : qAsConst(due))
        context->Notify(NotifyGetSnapshotList, request, QSharedPointer<SnapshotResponse>::create(), failure);
}

QString VersionLoads::ListFailure(const GetSnapshotListRequest& request, quint64 serial, quint64 ticket,
                                  const WbHttpAnswer& answer)
{
    const auto records = answer.IsSuccess() ? ReadVersions(answer.body) : std::nullopt;
    const QString failure = ReasonOf(answer, records.has_value());
    if (!failure.isEmpty())
        return failure;
    // An answer that was overtaken by a newer one of the same app has nothing to add.
    if (serial < appliedSerial)
        return {};
    appliedSerial = serial;
    QVector<RpaAppSnapshotPtr> snapshots;
    QVector<VersionRecord> merged = context->journal.Merge(*records, request.GetAppId(), ticket);
    context->restored.PutFirst(&merged);
    for (const VersionRecord& record : qAsConst(merged)) {
        snapshots.append(record.snapshot);
        context->manager.SetListedRevision(record.snapshot->GetId(), record.revision);
    }
    context->manager.SetSnapshots(snapshots);
    return {};
}

void VersionLoads::Data(const QSharedPointer<GetDevSnapshotDataRequest>& request)
{
    const QString id = request->GetSnapshotId();
    SetSpacing();
    ++context->loads[id];
    context->spacer.Run(QStringLiteral("data/") + id, [this, request, id] {
        context->queue.Enqueue(id, [this, request, id] {
            const QString refusal =
                ServiceRoutes::IsValidId(id) ? QString() : QStringLiteral("版本不存在，无法打开");
            context->SendOrRefuse(refusal, ServiceRoutes::VersionData(id),
                                  [this, request](const WbHttpAnswer& answer) { OnData(request, answer); });
        });
    });
}

// Why the content must not be opened; empty when it may. An editor shows a new app in the place of content
// that it cannot read, and its next save would put that over the content.
QString VersionLoads::ContentFailure(const QString& id, const AppOutline& outline) const
{
    const QString ownApi = RpaGlobalDataManager::Instance()->GetApiVersion();
    const auto isNewer = [&ownApi](const QString& api) { return Utils::CompareVersion(ownApi, api) < 0; };
    // Content of another shape may tell its version elsewhere; then the list knows who wrote it.
    const auto listed = context->manager.GetConfirmed(id);
    if (isNewer(outline.version) || (!outline.IsApp() && listed && isNewer(listed->GetApiVersion())))
        return TooOldText();
    if (!outline.IsApp())
        return QStringLiteral("该版本的内容无法识别，没有打开，服务器上的内容保持不变（%1）")
            .arg(outline.problem);
    return {};
}

void VersionLoads::OnData(const QSharedPointer<GetDevSnapshotDataRequest>& request,
                          const WbHttpAnswer& answer)
{
    const QString id = request->GetSnapshotId();
    const int revision = RevisionOf(answer);
    QString failure = ReasonOf(answer, revision > 0);
    // Restored work is the author's own and was tried before it was offered.
    if (failure.isEmpty() && !context->restored.IsWaitingFor(id))
        failure = ContentFailure(id, answer.outline);
    auto response = QSharedPointer<GetDevSnapshotDataResponse>::create();
    std::optional<RestoredContent> restored;
    if (failure.isEmpty()) {
        restored = context->restored.Take(id);
        const bool hasBase = restored && restored->baseRevision > 0;
        response->SetAppData(restored ? restored->json : answer.body);
        context->manager.SetBaseRevision(id, hasBase ? restored->baseRevision : revision);
        context->unsettled.SettleVersion(id);
        context->ledger.Reset(id, answer.bodyDigest.toHex());
    }
    context->spacer.Answered(QStringLiteral("data/") + id, failure.isEmpty());
    context->queue.Finish(id);
    if (--context->loads[id] == 0)
        context->loads.remove(id);
    const RpaContentOrigin loaded{id, revision, QString()};
    const RpaContentSource source(restored ? restored->origin : loaded, restored.has_value());
    context->Notify(NotifyGetDevSnapshotData, request, response, failure);
}
