// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "VersionContext_p.h"

// Lists of versions and data of one version.
class VersionLoads
{
public:
    // The context outlives this object.
    explicit VersionLoads(VersionContext* sharedContext) : context(sharedContext) {}

    void List(const QSharedPointer<GetSnapshotListRequest>& request);
    void Data(const QSharedPointer<GetDevSnapshotDataRequest>& request);

private:
    struct Order
    {
        QSharedPointer<GetSnapshotListRequest> request;
        AppAudience::Ticket ticket;
        quint64 serial;
    };

    void SetSpacing();
    void SendList(const Order& order);
    void OnList(const Order& order, quint64 sent, const WbHttpAnswer& answer);
    QString ListFailure(const Order& order, quint64 sent, const WbHttpAnswer& answer);
    QString ContentFailure(const QString& id, const AppOutline& outline) const;
    std::optional<RestoredContent> TakeLoaded(const QString& id, int revision, const QByteArray& sha256);
    void OnData(const QSharedPointer<GetDevSnapshotDataRequest>& request, const AppAudience::Ticket& ticket,
                const WbHttpAnswer& answer);

    VersionContext* const context;
    quint64 lastSerial = 0;
    quint64 appliedSerial = 0;
};
