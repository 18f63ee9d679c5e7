#pragma once

#include "RepeatSpacer_p.h"
#include "SaveOrder_p.h"
#include "ServiceAnswers_p.h"
#include "ServiceTransport_p.h"
#include "UnsettledWrites_p.h"
#include "VersionQueue_p.h"
#include "WriteJournal_p.h"

#include <RpaEditorCore/RpaSnapshotManager.h>
#include <RpaEditorLogic/RpaNotifyId.h>
#include <RpaEditorLogic/SaveLedger.h>
#include <RpaEditorLogic/SnapshotRequests.h>

#include <QSharedPointer>

// The six version requests: each takes what it needs from its request at once (callers change the records
// they gave while the request is under way), sends it in the order of its version, works the answer into the
// snapshot manager and the ledger, and then tells the observers.
class VersionService
{
public:
    void Save(const QSharedPointer<SaveAppSnapshotInfoRequest>& request);
    void Update(const QSharedPointer<UpdateAppSnapshotInfoRequest>& request);
    void Delete(const QSharedPointer<DeleteAppSnapshotInfoRequest>& request);
    void List(const QSharedPointer<GetSnapshotListRequest>& request);
    void Data(const QSharedPointer<GetDevSnapshotDataRequest>& request);
    void Release(const QSharedPointer<GrayOrReleaseRequest>& request);

    // Answers all that is outstanding.
    void Shutdown();
    // And forgets everything that was learned from answers.
    void Forget();

    RpaSnapshotManager* GetManager() { return &manager; }
    SaveLedger* GetLedger() { return &ledger; }

private:
    using Done = ServiceTransport::Done;

    using Ended = std::function<void(const SaveOrder& order, const WbHttpAnswer& answer)>;

    static SaveOrder OrderOf(const RpaAppSnapshotPtr& snapshot);

    void SendOrRefuse(const QString& refusal, const WbHttpRequest& route, const Done& done);
    void Notify(int notifyId, const QSharedPointer<IHttpRequest>& request,
                const QSharedPointer<SnapshotResponse>& response, const QString& failure);

    void OnCreated(const QSharedPointer<SaveAppSnapshotInfoRequest>& request, const SaveOrder& order,
                   const WbHttpAnswer& answer);
    void SendUpdate(const QSharedPointer<UpdateAppSnapshotInfoRequest>& request, SaveOrder order);
    void OnUpdated(const QSharedPointer<UpdateAppSnapshotInfoRequest>& request, const SaveOrder& order,
                   const WbHttpAnswer& answer);
    void OnDeleted(const QSharedPointer<DeleteAppSnapshotInfoRequest>& request, const WbHttpAnswer& answer);
    void OnList(const QSharedPointer<GetSnapshotListRequest>& request, quint64 serial, quint64 ticket,
                const WbHttpAnswer& answer);
    void OnData(const QSharedPointer<GetDevSnapshotDataRequest>& request, const WbHttpAnswer& answer);
    void OnReleased(const QSharedPointer<GrayOrReleaseRequest>& request, const WbHttpAnswer& answer);

    void SendOverOwn(const SaveOrder& order, const WbHttpAnswer& refusal, const Ended& ended);
    void LearnRevisions(const QString& appId);
    QString UpdateRefusal(const SaveOrder& order) const;
    QString ReleaseRefusal(const GrayOrReleaseRequest& request) const;
    QString ListFailure(const GetSnapshotListRequest& request, quint64 serial, quint64 ticket,
                        const WbHttpAnswer& answer);
    void TakeSaved(const ServiceAnswers::VersionRecord& record);
    void TakeListed(const ServiceAnswers::VersionRecord& record);

    RpaSnapshotManager manager;
    SaveLedger ledger;
    WriteJournal journal;
    UnsettledWrites unsettled;
    VersionQueue queue;
    RepeatSpacer spacer;
    QString newestListAppId;
    quint64 lastListSerial = 0;
    quint64 appliedListSerial = 0;
    ServiceTransport transport; // last: what it answers while it goes needs the others
};
