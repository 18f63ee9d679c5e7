// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaServiceClient/versions/VersionServiceVersion.h>

#include <QVector>

// Writes that were confirmed while a list was on its way. The list may have been read before them, so they
// are worked into it: a deleted version does not come back, a created one does not vanish.
class WriteJournal
{
public:
    // A list goes out; the ticket stands for this moment.
    quint64 ListSent();
    void ListAnswered();

    void Wrote(const VersionServiceVersion& record) { Append(record.id, record); }
    void Removed(const QString& versionId) { Append(versionId, {}); }

    // The list as it is after the writes since the ticket.
    QVector<VersionServiceVersion> Merge(const QVector<VersionServiceVersion>& records, const QString& appId,
                                         quint64 ticket) const;

private:
    struct Write
    {
        quint64 time;
        QString versionId;
        VersionServiceVersion record; // without id: removed
    };

    void Append(const QString& versionId, const VersionServiceVersion& record);

    QVector<Write> writes;
    quint64 time = 0;
    int listsInFlight = 0;
};
