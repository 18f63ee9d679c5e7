#pragma once

#include "VersionContext_p.h"

// Lists of versions and data of one version.
class VersionLoads
{
public:
    // The context outlives this object.
    explicit VersionLoads(VersionContext* context);

    void List(const QSharedPointer<GetSnapshotListRequest>& request);
    void Data(const QSharedPointer<GetDevSnapshotDataRequest>& request);

private:
    using ListRequest = QSharedPointer<GetSnapshotListRequest>;

    void SetSpacing();
    void SendList(const ListRequest& request, quint64 serial);
    void OnList(const ListRequest& request, quint64 serial, quint64 ticket, const WbHttpAnswer& answer);
    void NotifyOvertaken();
    QString ListFailure(const GetSnapshotListRequest& request, quint64 serial, quint64 ticket,
                        const WbHttpAnswer& answer);
    QString ContentFailure(const QString& id, const AppOutline& outline) const;
    void OnData(const QSharedPointer<GetDevSnapshotDataRequest>& request, const WbHttpAnswer& answer);

    VersionContext* const context;
    quint64 lastSerial = 0;
    quint64 appliedSerial = 0;
    // Whoever asked for the list of another app meanwhile is told how that went: the manager shows nothing
    // else.
    bool isNewestAnswered = false;
    QString newestFailure;
    QVector<ListRequest> overtaken;
};
