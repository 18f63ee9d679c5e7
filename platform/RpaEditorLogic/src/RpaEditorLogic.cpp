#include "VersionService_p.h"

#include <OxBase/OxBlocker.h>
#include <RpaEditorLogic/RpaEditorLogic.h>

#include <QCoreApplication>

class RpaEditorLogic::Private
{
public:
    VersionService service;
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
    // While there still is an application: threads must not outlive it, and answers may still be shown.
    qAddPostRoutine(ShutDownWithApplication);
    OxBlocker::SetOutstandingQuery([this] { return d->service.GetLedger()->HasSavesInFlight(); });
}

RpaEditorLogic::~RpaEditorLogic()
{
    OxBlocker::SetOutstandingQuery(nullptr);
}

void RpaEditorLogic::SaveAppSnapshotInfo(const QSharedPointer<SaveAppSnapshotInfoRequest>& request)
{
    d->service.Save(request);
}

void RpaEditorLogic::UpdateAppSnapshotInfo(const QSharedPointer<UpdateAppSnapshotInfoRequest>& request)
{
    d->service.Update(request);
}

void RpaEditorLogic::DeleteAppSnapshotInfo(const QSharedPointer<DeleteAppSnapshotInfoRequest>& request)
{
    d->service.Delete(request);
}

void RpaEditorLogic::GetSnapshotList(const QSharedPointer<GetSnapshotListRequest>& request)
{
    d->service.List(request);
}

void RpaEditorLogic::GetDevSnapshotData(const QSharedPointer<GetDevSnapshotDataRequest>& request)
{
    d->service.Data(request);
}

void RpaEditorLogic::GrayOrRelease(const QSharedPointer<GrayOrReleaseRequest>& request)
{
    d->service.Release(request);
}

RpaSnapshotManager* RpaEditorLogic::GetDevSnapshotManager() const
{
    return d->service.GetManager();
}

SaveLedger* RpaEditorLogic::GetSaveLedger() const
{
    return d->service.GetLedger();
}

void RpaEditorLogic::Shutdown()
{
    d->service.Shutdown();
}

void RpaEditorLogic::Forget()
{
    d->service.Forget();
}
