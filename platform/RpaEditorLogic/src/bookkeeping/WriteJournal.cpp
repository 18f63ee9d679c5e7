// SPDX-License-Identifier: Apache-2.0

#include "WriteJournal_p.h"

#include <algorithm>

quint64 WriteJournal::ListSent()
{
    ++listsInFlight;
    return time;
}

void WriteJournal::ListAnswered()
{
    if (--listsInFlight == 0)
        writes.clear();
}

void WriteJournal::Append(const QString& versionId, const VersionServiceVersion& record)
{
    ++time;
    if (listsInFlight > 0)
        writes.append({time, versionId, record});
}

QVector<VersionServiceVersion> WriteJournal::Merge(const QVector<VersionServiceVersion>& records,
                                                   const QString& appId, quint64 ticket) const
{
    auto merged = records;
    for (const Write& write : writes) {
        if (write.time <= ticket)
            continue;
        const auto listed = std::find_if(merged.begin(), merged.end(), [&write](const auto& record) {
            return record.id == write.versionId;
        });
        if (write.record.id.isEmpty()) {
            if (listed != merged.end())
                merged.erase(listed);
        } else if (listed == merged.end()) {
            if (write.record.appId == appId)
                merged.prepend(write.record);
        } else if (listed->revision < write.record.revision) {
            *listed = write.record;
        }
    }
    return merged;
}
