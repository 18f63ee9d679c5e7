#pragma once

#include "RepeatSpacer_p.h"
#include "RestoredWork_p.h"
#include "ServiceAnswers_p.h"
#include "ServiceTransport_p.h"
#include "UnsettledWrites_p.h"
#include "VersionQueue_p.h"
#include "WriteJournal_p.h"

#include <RpaEditorCore/RpaSnapshotManager.h>
#include <RpaEditorLogic/RpaNotifyId.h>
#include <RpaEditorLogic/SaveLedger.h>
#include <RpaEditorLogic/SnapshotRequests.h>

#include <QHash>
#include <QSharedPointer>

// What the version requests share: what is known of the versions, and the way to the server and to the
// observers.
struct VersionContext
{
    // Answers with the refusal, if there is one, instead of sending.
    void SendOrRefuse(const QString& refusal, const WbHttpRequest& route, const ServiceTransport::Done& done);
    // Gives the response its outcome and hands it out. failure empty: success.
    void Notify(int notifyId, const QSharedPointer<IHttpRequest>& request,
                const QSharedPointer<SnapshotResponse>& response, const QString& failure);

    // The server confirmed content that was sent from here.
    void TakeSaved(const ServiceAnswers::VersionRecord& record);
    // The server told how the version stands.
    void TakeListed(const ServiceAnswers::VersionRecord& record);

    // A load of the version is asked for and not handed out yet.
    bool IsLoading(const QString& versionId) const { return loads.value(versionId) > 0; }

    RpaSnapshotManager manager;
    SaveLedger ledger;
    WriteJournal journal;
    UnsettledWrites unsettled;
    RestoredWork restored;
    VersionQueue queue;
    RepeatSpacer spacer;
    QHash<QString, int> loads;  // by version id, those not handed out yet
    QString shownAppId;         // of the newest list request
    ServiceTransport transport; // last: what it answers while it goes needs the others
};

// Why a request failed; empty when it succeeded with a usable answer.
QString ReasonOf(const WbHttpAnswer& answer, bool isUsable);
