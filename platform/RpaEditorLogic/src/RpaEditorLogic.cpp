// SPDX-License-Identifier: Apache-2.0

#include "VersionChanges_p.h"
#include "VersionLoads_p.h"
#include "VersionSaves_p.h"

#include <OxBase/OxBlocker.h>
#include <OxHttp/HttpNotifyManager.h>
#include <RpaEditorLogic/IReleaseReview.h>
#include <RpaEditorLogic/RpaEditorLogic.h>
#include <RpaServiceClient/VersionServiceSettings.h>

#include <QCoreApplication>

class RpaEditorLogic::Private
{
public:
    VersionContext context;
    VersionSaves saves{&context};
    VersionLoads loads{&context};
    VersionChanges changes{&context};
    IReleaseReview* review = nullptr;
};

namespace
{
void ShutDownWithApplication()
{
    RpaEditorLogic::Instance()->Shutdown();
}
} // namespace

RpaEditorLogic* RpaEditorLogic::Instance()
{
    static RpaEditorLogic logic;
    return &logic;
}

RpaEditorLogic::RpaEditorLogic() : d(std::make_unique<Private>())
{
    // A repeat that waits is meant for the editor that asked, and for the service that it worked with.
    d->context.backoff.SetLife([] {
        const auto* answers = HttpNotifyManager::Instance();
        return VersionServiceSettings::Instance()->GetIdentityNumber() +
               answers->GetAudienceNumber(NotifyGetSnapshotList) +
               answers->GetAudienceNumber(NotifyGetDevSnapshotData);
    });
    // While there still is an application: threads must not outlive it, and answers may still be shown.
    qAddPostRoutine(ShutDownWithApplication);
    OxBlocker::SetOutstandingQuery([this] { return d->context.ledger.HasSavesInFlight(); });
}

IReleaseReview::~IReleaseReview() = default;

RpaEditorLogic::~RpaEditorLogic()
{
    OxBlocker::SetOutstandingQuery(nullptr);
}

void RpaEditorLogic::SaveAppSnapshotInfo(const QSharedPointer<SaveAppSnapshotInfoRequest>& request)
{
    d->saves.Save(request);
}

void RpaEditorLogic::UpdateAppSnapshotInfo(const QSharedPointer<UpdateAppSnapshotInfoRequest>& request)
{
    d->saves.Update(request);
}

void RpaEditorLogic::DeleteAppSnapshotInfo(const QSharedPointer<DeleteAppSnapshotInfoRequest>& request)
{
    d->changes.Delete(request);
}

void RpaEditorLogic::GetSnapshotList(const QSharedPointer<GetSnapshotListRequest>& request)
{
    d->loads.List(request);
}

void RpaEditorLogic::GetDevSnapshotData(const QSharedPointer<GetDevSnapshotDataRequest>& request)
{
    d->loads.Data(request);
}

void RpaEditorLogic::GrayOrRelease(const QSharedPointer<GrayOrReleaseRequest>& request)
{
    if (!d->review) {
        d->changes.Release(request, QString());
        return;
    }
    d->review->Review(*request,
                      [this, request](const QString& refusal) { d->changes.Release(request, refusal); });
}

void RpaEditorLogic::SetReleaseReview(IReleaseReview* review)
{
    d->review = review;
}

RpaSnapshotManager* RpaEditorLogic::GetDevSnapshotManager() const
{
    return &d->context.manager;
}

SaveLedger* RpaEditorLogic::GetSaveLedger() const
{
    return &d->context.ledger;
}

QVector<VersionAct> RpaEditorLogic::GetActsUnderWay(const QString& appId) const
{
    QVector<VersionAct> acts;
    for (const auto& [serial, act] : d->context.acts)
        if (act.appId == appId)
            acts.append(act);
    return acts;
}

void RpaEditorLogic::Restore(const RestoredContent& content)
{
    d->context.restored.Set(content);
}

void RpaEditorLogic::ForgetRestored()
{
    d->context.restored.Withdraw();
}

void RpaEditorLogic::Shutdown()
{
    // Loads that wait for their turn are sent first, so that they are answered with the others.
    d->context.backoff.Flush();
    d->context.transport.Shutdown();
}

void RpaEditorLogic::Forget()
{
    Shutdown();
    d->context.manager.Forget();
    d->context.ledger.Forget();
    d->context.restored.Forget();
    d->context.backoff.Forget();
    d->context.shownAppId.clear();
}
