// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "SaveOrder_p.h"
#include "VersionContext_p.h"

// New versions and overwrites. What a save carries is taken from its record at once: callers change the
// records they gave while the request is under way.
class VersionSaves
{
public:
    // The context outlives this object.
    explicit VersionSaves(VersionContext* sharedContext) : context(sharedContext) {}

    void Save(const QSharedPointer<SaveAppSnapshotInfoRequest>& request);
    void Update(const QSharedPointer<UpdateAppSnapshotInfoRequest>& request);

private:
    using Ended = std::function<void(const SaveOrder& order, const TriedAnswer& answer)>;

    static SaveOrder OrderOf(const RpaAppSnapshotPtr& snapshot);
    AppAudience::Ticket TicketOf(const SaveOrder& order) const;
    static void Rebase(const SaveOrder& order, const VersionServiceVersion& saved);

    void OnCreated(const QSharedPointer<SaveAppSnapshotInfoRequest>& request, const SaveOrder& order,
                   const TriedAnswer& answer);
    void SendUpdate(const QSharedPointer<UpdateAppSnapshotInfoRequest>& request, SaveOrder order,
                    const QString& refusal);
    // Why the content has no business where it is to be saved; empty when it has. Asked when the save is.
    QString ContentRefusal(const SaveOrder& order) const;
    bool IsOfAnotherApp(const SaveOrder& order) const;
    QString UpdateRefusal(const SaveOrder& order) const;
    int BaseOf(const SaveOrder& order) const;
    void OnUpdated(const QSharedPointer<UpdateAppSnapshotInfoRequest>& request, const SaveOrder& order,
                   const TriedAnswer& answer);
    void Fail(const SaveOrder& order, int notifyId, const WbHttpAnswer& answer, const QString& failure);
    bool MayBeOwn(const SaveOrder& order, const TriedAnswer& answer);
    void SendOverOwn(const SaveOrder& order, const TriedAnswer& refusal, const Ended& ended);

    VersionContext* const context;
};
