// SPDX-License-Identifier: Apache-2.0

#include "VersionContext_p.h"

#include <RpaServiceClient/ServiceAnswers.h>

QString ReasonOf(const WbHttpAnswer& answer, bool isUsable)
{
    if (answer.IsSuccess())
        return isUsable ? QString() : ServiceAnswers::UnusableText();
    return ServiceAnswers::FailureText(answer);
}

QString TooOldText()
{
    return QStringLiteral("当前版本过低，请更新为最新版本");
}

RpaAppSnapshotPtr SnapshotOf(const VersionServiceVersion& version)
{
    auto snapshot = RpaAppSnapshotPtr::create();
    snapshot->SetId(version.id);
    snapshot->SetAppId(version.appId);
    snapshot->SetName(version.name);
    snapshot->SetDesc(version.description);
    snapshot->SetApiVersion(version.apiVersion);
    snapshot->SetPin(version.pin);
    snapshot->SetState(static_cast<AppSnapshotState>(version.state));
    return snapshot;
}

void VersionContext::SendOrRefuse(const QString& refusal, const WbHttpRequest& http,
                                  const ServiceTransport::Done& done)
{
    const bool isStale = refusal.isEmpty() && backoff.IsStale();
    if (refusal.isEmpty() && !isStale) {
        transport.Send(http, done);
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
    const bool isSave = notifyId == NotifySaveAppSnapshotInfo || notifyId == NotifyUpdateAppSnapshotInfo;
    audience.Notify(ticket, isSave, notifyId, request, response);
}

AppAudience::Ticket VersionContext::TicketFor(const QString& appId, const QString& versionId) const
{
    const auto known = appId.isEmpty() ? manager.GetConfirmed(versionId) : RpaAppSnapshotPtr();
    return audience.Take(known ? known->GetAppId() : appId);
}

void VersionContext::TakeSaved(const VersionServiceVersion& version)
{
    manager.SetBaseRevision(version.id, version.revision);
    TakeListed(version);
}

void VersionContext::TakeListed(const VersionServiceVersion& version)
{
    manager.SetListedRevision(version.id, version.revision);
    // A save of an app that is no longer shown must not appear among the versions of the one that is.
    if (shownAppId.isEmpty() || version.appId == shownAppId)
        manager.AddOrReplace(SnapshotOf(version));
    journal.Wrote(version);
}
