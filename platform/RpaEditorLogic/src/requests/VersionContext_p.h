// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "AppAudience_p.h"
#include "InDoubtWrites_p.h"
#include "LoadBackoff_p.h"
#include "RestoredWork_p.h"
#include "VersionQueue_p.h"
#include "WriteJournal_p.h"

#include <RpaEditorCore/RpaSnapshotManager.h>
#include <RpaEditorLogic/RpaNotifyId.h>
#include <RpaEditorLogic/SaveLedger.h>
#include <RpaEditorLogic/SnapshotRequests.h>
#include <RpaEditorLogic/VersionAct.h>
#include <RpaServiceClient/ServiceTransport.h>
#include <RpaServiceClient/versions/VersionServiceVersion.h>

#include <QHash>
#include <QSharedPointer>

#include <map>

// What the version requests share: what is known of the versions, and the way to the server and to the
// observers.
struct VersionContext
{
    // Answers with the refusal, if there is one, instead of sending.
    void SendOrRefuse(const QString& refusal, const WbHttpRequest& http, const ServiceTransport::Done& done);
    // Gives the response its outcome and hands it out to those whom it is for. failure empty: success.
    void Notify(int notifyId, const AppAudience::Ticket& ticket, const QSharedPointer<IHttpRequest>& request,
                const QSharedPointer<SnapshotResponse>& response, const QString& failure);
    // For a request about a version; appId empty: that which the version is known to belong to.
    AppAudience::Ticket TicketFor(const QString& appId, const QString& versionId) const;

    // The server confirmed content that was sent from here.
    void TakeSaved(const VersionServiceVersion& version);
    // The server told how the version stands.
    void TakeListed(const VersionServiceVersion& version);

    // A load of the version is asked for and not handed out yet.
    bool IsLoading(const QString& versionId) const { return loads.value(versionId) > 0; }

    RpaSnapshotManager manager;
    SaveLedger ledger;
    WriteJournal journal;
    InDoubtWrites inDoubt;
    RestoredWork restored;
    VersionQueue queue;
    LoadBackoff backoff;
    AppAudience audience;
    std::map<quint64, VersionAct> acts; // those not answered yet, by the order they were asked for
    QHash<QString, int> loads;          // by version id, those not handed out yet
    QString shownAppId;                 // of the newest list request
    ServiceTransport transport;         // last: what it answers while it goes needs the others
};

// Why a request failed; empty when it succeeded with a usable answer.
QString ReasonOf(const WbHttpAnswer& answer, bool isUsable);

// For content of a newer client; the words by which editors refuse it.
QString TooOldText();

// The version as editors know it.
RpaAppSnapshotPtr SnapshotOf(const VersionServiceVersion& version);
