// SPDX-License-Identifier: Apache-2.0

#include "ReleaseCheck_p.h"
#include "VersionChanges_p.h"

#include <RpaCore/RpaAppKind.h>
#include <RpaServiceClient/releases/ReleaseVersionRequest.h>
#include <RpaServiceClient/versions/DeleteVersionRequest.h>
#include <RpaServiceClient/versions/GetVersionDataRequest.h>
#include <RpaServiceClient/versions/ListVersionsRequest.h>

namespace
{
// Why users could not run the content; empty when they could.
QString ContentProblem(const WbHttpAnswer& content)
{
    constexpr int longest = 200; // names in it are as long as somebody made them
    const QString problem = content.outline.IsApp() ? content.verdict : content.outline.problem;
    return problem.simplified().left(longest);
}
} // namespace

VersionChanges::Order VersionChanges::Begin(VersionAct::Kind kind, const QString& appId,
                                            const QString& versionId)
{
    const auto snapshot = context->manager.GetConfirmed(versionId);
    Order order{context->TicketFor(appId, versionId), ++lastSerial};
    context->acts.emplace(order.serial, VersionAct{kind, order.ticket.appId, versionId,
                                                   snapshot ? snapshot->GetName() : QString()});
    return order;
}

void VersionChanges::End(const Order& order, const QString& versionId)
{
    context->acts.erase(order.serial);
    context->queue.Finish(versionId);
}

void VersionChanges::Delete(const QSharedPointer<DeleteAppSnapshotInfoRequest>& request)
{
    const QString id = request->GetSnapshotId();
    const Order order = Begin(VersionAct::Kind::Deletion, request->GetAppId(), id);
    context->queue.Enqueue(id, [this, request, order, id] {
        const QString refusal =
            ServiceRoute::IsValidId(id) ? QString() : QStringLiteral("版本不存在，无法删除");
        // The author decided by what the list shows, so the newest revision heard of is the one that is
        // meant.
        const int revision = context->manager.GetNewestRevision(id);
        context->SendOrRefuse(
            refusal, DeleteVersionRequest{id, revision}.ToHttp(),
            [this, request, order](const WbHttpAnswer& answer) { OnDeleted(request, order, answer); });
    });
}

void VersionChanges::OnDeleted(const QSharedPointer<DeleteAppSnapshotInfoRequest>& request,
                               const Order& order, const WbHttpAnswer& answer)
{
    SaveOrder lost;
    lost.versionId = request->GetSnapshotId();
    const RpaAppSnapshotPtr listed = context->manager.GetSnapshot(lost.versionId);
    lost.appId = listed ? listed->GetAppId() : order.ticket.appId;
    if (ServiceRoute::IsValidId(lost.appId) && context->inDoubt.MayExplain(lost, answer))
        DeleteOverOwn(request, order, lost, answer);
    else
        FinishDelete(request, order, answer);
}

// The change that stands in the way may be a save of the same author whose answer was lost: whoever deletes
// the version means that one too.
void VersionChanges::DeleteOverOwn(const QSharedPointer<DeleteAppSnapshotInfoRequest>& request,
                                   const Order& order, const SaveOrder& lost, const WbHttpAnswer& refusal)
{
    const auto decide = [this, request, order, lost, refusal](const WbHttpAnswer& list) {
        const auto records = list.IsSuccess() ? ListVersionsRequest::Read(list) : std::nullopt;
        const auto own = records ? context->inDoubt.FindOwn(lost, *records) : std::nullopt;
        if (!own) {
            FinishDelete(request, order, records ? refusal : list);
            return;
        }
        context->transport.Send(
            DeleteVersionRequest{lost.versionId, own->revision}.ToHttp(),
            [this, request, order](const WbHttpAnswer& answer) { FinishDelete(request, order, answer); });
    };
    context->transport.Send(ListVersionsRequest{lost.appId}.ToHttp(), decide);
}

void VersionChanges::FinishDelete(const QSharedPointer<DeleteAppSnapshotInfoRequest>& request,
                                  const Order& order, const WbHttpAnswer& answer)
{
    const QString id = request->GetSnapshotId();
    // Gone already, by the service's own word: what was asked for is so.
    const bool isGone = answer.status == 404 && !ServiceAnswers::RefusalCode(answer).isEmpty();
    const QString failure = isGone ? QString() : ReasonOf(answer, true);
    if (failure.isEmpty()) {
        context->manager.Remove(id);
        context->journal.Removed(id);
        context->inDoubt.SettleVersion(id);
    }
    if (answer.error == WbHttpError::None && answer.status == 412)
        LearnRevisions(order.ticket.appId);
    End(order, id);
    context->Notify(NotifyDeleteAppSnapshotInfo, order.ticket, request,
                    QSharedPointer<SnapshotResponse>::create(), failure);
}

// The author was told that somebody else changed the version; whoever deletes it now means what is there now.
void VersionChanges::LearnRevisions(const QString& appId)
{
    if (!ServiceRoute::IsValidId(appId))
        return;
    context->transport.Send(ListVersionsRequest{appId}.ToHttp(), [this](const WbHttpAnswer& answer) {
        const auto records = answer.IsSuccess() ? ListVersionsRequest::Read(answer) : std::nullopt;
        for (const VersionServiceVersion& version : records.value_or(ListVersionsRequest::Answer()))
            context->manager.SetListedRevision(version.id, version.revision);
    });
}

void VersionChanges::Release(const QSharedPointer<GrayOrReleaseRequest>& request, const QString& reviewed)
{
    const QString id = request->GetSnapshotId();
    // Asked now, not when its turn comes: behind a save that is under way it would release what nobody has
    // seen.
    const QString refusal = reviewed.isEmpty() ? ReleaseRefusal(*request) : reviewed;
    const auto kind = request->GetPublishType() == AppReleaseGray ? VersionAct::Kind::GrayRelease
                                                                  : VersionAct::Kind::Publication;
    const Order order = Begin(kind, request->GetAppId(), id);
    context->queue.Enqueue(id, [this, request, order, id, refusal] {
        // What the server has is released, whatever is open here.
        WbHttpRequest content = GetVersionDataRequest{id}.ToHttp();
        content.expectation.judge = ReleaseCheck::FindProblem;
        context->SendOrRefuse(refusal, content, [this, request, order](const WbHttpAnswer& answer) {
            OnChecked(request, order, answer);
        });
    });
}

void VersionChanges::OnChecked(const QSharedPointer<GrayOrReleaseRequest>& request, const Order& order,
                               const WbHttpAnswer& answer)
{
    const QString id = request->GetSnapshotId();
    const int revision = ServiceAnswers::RevisionOf(answer);
    const int base = context->manager.GetBaseRevision(id);
    QString failure = ReasonOf(answer, revision > 0);
    // Of content that the author has not seen, the server itself refuses the release.
    if (failure.isEmpty() && revision == base) {
        const QString problem = ContentProblem(answer);
        const QString text = request->GetPublishType() == AppReleaseGray
                                 ? QStringLiteral("该版本无法运行，没有灰度：%1")
                                 : QStringLiteral("该版本无法运行，没有上线：%1");
        failure = problem.isEmpty() ? QString() : text.arg(problem);
    }
    if (!failure.isEmpty()) {
        const auto response = QSharedPointer<GrayOrReleaseResponse>::create();
        response->SetOutcome(false, failure);
        FinishRelease(request, order, response);
        return;
    }
    context->transport.Send(
        ReleaseVersionRequest{id, request->GetPublishType(), base}.ToHttp(),
        [this, request, order](const WbHttpAnswer& released) { OnReleased(request, order, released); });
}

QString VersionChanges::ReleaseRefusal(const GrayOrReleaseRequest& request) const
{
    if (!ServiceRoute::IsValidId(request.GetSnapshotId()))
        return QStringLiteral("版本不存在，无法发布");
    switch (context->ledger.GetOutcome(request.GetSnapshotId())) {
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

void VersionChanges::OnReleased(const QSharedPointer<GrayOrReleaseRequest>& request, const Order& order,
                                const WbHttpAnswer& answer)
{
    const QString id = request->GetSnapshotId();
    const auto outcome =
        answer.IsSuccess() ? ServiceAnswers::ReadAs<VersionServiceReleaseOutcome>(answer) : std::nullopt;
    const QString failure = ReasonOf(answer, outcome && outcome->version.id == id);
    auto response = QSharedPointer<GrayOrReleaseResponse>::create();
    if (failure.isEmpty()) {
        response->SetResult(outcome->isDone ? 1 : 0);
        response->SetNeedTip(outcome->needTip);
        // A release that did not take effect was not held against our revision.
        if (outcome->isDone)
            context->manager.SetBaseRevision(id, outcome->version.revision);
        context->TakeListed(outcome->version);
    }
    response->SetOutcome(failure.isEmpty(),
                         failure.isEmpty() && !outcome->isDone ? outcome->message : failure);
    FinishRelease(request, order, response);
}

void VersionChanges::FinishRelease(const QSharedPointer<GrayOrReleaseRequest>& request, const Order& order,
                                   const QSharedPointer<GrayOrReleaseResponse>& response)
{
    End(order, request->GetSnapshotId());
    context->audience.Notify(order.ticket, false, NotifyGrayOrRelease, request, response);
}
