// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "SaveOrder_p.h"
#include "VersionContext_p.h"

// Deletion and release: what changes a version without touching its content.
class VersionChanges
{
public:
    // The context outlives this object.
    explicit VersionChanges(VersionContext* sharedContext) : context(sharedContext) {}

    void Delete(const QSharedPointer<DeleteAppSnapshotInfoRequest>& request);
    // reviewed: why it is refused before anything else; empty when it is not.
    void Release(const QSharedPointer<GrayOrReleaseRequest>& request, const QString& reviewed);

private:
    struct Order
    {
        AppAudience::Ticket ticket;
        quint64 serial;
    };

    Order Begin(VersionAct::Kind kind, const QString& appId, const QString& versionId);
    void End(const Order& order, const QString& versionId);
    void OnDeleted(const QSharedPointer<DeleteAppSnapshotInfoRequest>& request, const Order& order,
                   const WbHttpAnswer& answer);
    void DeleteOverOwn(const QSharedPointer<DeleteAppSnapshotInfoRequest>& request, const Order& order,
                       const SaveOrder& lost, const WbHttpAnswer& refusal);
    void FinishDelete(const QSharedPointer<DeleteAppSnapshotInfoRequest>& request, const Order& order,
                      const WbHttpAnswer& answer);
    void LearnRevisions(const QString& appId);
    QString ReleaseRefusal(const GrayOrReleaseRequest& request) const;
    void OnChecked(const QSharedPointer<GrayOrReleaseRequest>& request, const Order& order,
                   const WbHttpAnswer& answer);
    void OnReleased(const QSharedPointer<GrayOrReleaseRequest>& request, const Order& order,
                    const WbHttpAnswer& answer);
    void FinishRelease(const QSharedPointer<GrayOrReleaseRequest>& request, const Order& order,
                       const QSharedPointer<GrayOrReleaseResponse>& response);

    VersionContext* const context;
    quint64 lastSerial = 0;
};
