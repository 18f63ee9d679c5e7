// SPDX-License-Identifier: Apache-2.0

#include "VersionContext_p.h"

using namespace ServiceAnswers;

QString ReasonOf(const WbHttpAnswer& answer, bool isUsable)
{
    if (answer.IsSuccess())
        return isUsable ? QString() : UnusableText();
    return FailureText(answer);
}

void VersionContext::SendOrRefuse(const QString& refusal, const WbHttpRequest& route,
                                  const ServiceTransport::Done& done)
{
    const bool isStale = refusal.isEmpty() && backoff.IsStale();
    if (refusal.isEmpty() && !isStale) {
        transport.Send(route, done);
        return;
    }
    WbHttpAnswer answer;
    answer.error = WbHttpError::BadRequest;
    answer.errorText = isStale ? QStringLiteral("请求已取消") : refusal;
    transport.AnswerLocally(answer, done);
}

void VersionContext::Notify(int notifyId, const AppAudience::Ticket& ticket,
                            const QSharedPointer<IHttpRequest>& request,
                            const QSharedPointer<SnapshotResponse>& response, const QString& failure)
{
    response->SetOutcome(failure.isEmpty(), failure);
    // Whoever saves waits for that answer before it saves again.
    const bool isOwn = notifyId == NotifySaveAppSnapshotInfo || notifyId == NotifyUpdateAppSnapshotInfo;
    audience.Notify(ticket, isOwn, notifyId, request, response);
}

AppAudience::Ticket VersionContext::TicketFor(const QString& appId, const QString& versionId) const
{
    const auto known = appId.isEmpty() ? manager.GetConfirmed(versionId) : RpaAppSnapshotPtr();
    return audience.Take(known ? known->GetAppId() : appId);
}

void VersionContext::TakeSaved(const VersionRecord& record)
{
    manager.SetBaseRevision(record.snapshot->GetId(), record.revision);
    TakeListed(record);
}

void VersionContext::TakeListed(const VersionRecord& record)
{
    manager.SetListedRevision(record.snapshot->GetId(), record.revision);
    // A save of an app that is no longer shown must not appear among the versions of the one that is.
    if (shownAppId.isEmpty() || record.snapshot->GetAppId() == shownAppId)
        manager.AddOrReplace(record.snapshot);
    journal.Wrote(record);
}
