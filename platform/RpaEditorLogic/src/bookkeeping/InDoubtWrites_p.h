// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "SaveOrder_p.h"

#include <RpaServiceClient/TriedAnswer.h>
#include <RpaServiceClient/versions/VersionServiceVersion.h>

#include <QByteArrayList>
#include <QHash>

#include <optional>

// Saves whose answer was lost: the server may have done them. The next save of the same version would then be
// refused because of somebody who is nobody but its own author; by the hash of what was sent that can be
// told.
class InDoubtWrites
{
public:
    // A save failed; kept, beside those before it, when it is not known whether the server did it.
    void Note(const SaveOrder& order, const TriedAnswer& answer);
    // What an earlier session of the author sent on this revision of the version, likewise.
    void NoteEarlier(const QString& versionId, int base, const QByteArrayList& sha256s);
    // The version stands as the author knows it.
    void Settle(const SaveOrder& order) { writes.remove(KeyOf(order)); }
    void SettleVersion(const QString& versionId) { writes.remove(versionId); }

    // Whether the refusal of this save may come from one in doubt.
    bool MayExplain(const SaveOrder& order, const WbHttpAnswer& refusal) const;
    // The version that the save in doubt made, among those the server lists.
    std::optional<VersionServiceVersion> FindOwn(const SaveOrder& order,
                                                 const QVector<VersionServiceVersion>& listed) const;

private:
    struct Write
    {
        int base = 0;
        QByteArray sha256; // lower-case hex
    };

    static QString KeyOf(const SaveOrder& order);

    QHash<QString, QVector<Write>> writes;
};
