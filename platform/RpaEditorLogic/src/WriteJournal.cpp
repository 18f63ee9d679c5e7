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

void WriteJournal::Wrote(const ServiceAnswers::VersionRecord& record)
{
    Append(record.snapshot->GetId(), record);
}

void WriteJournal::Removed(const QString& versionId)
{
    Append(versionId, {});
}

void WriteJournal::Append(const QString& versionId, const ServiceAnswers::VersionRecord& record)
{
    ++time;
    if (listsInFlight > 0)
        writes.append({time, versionId, record});
}

QVector<ServiceAnswers::VersionRecord>
WriteJournal::Merge(const QVector<ServiceAnswers::VersionRecord>& records, const QString& appId,
                    quint64 ticket) const
{
    auto merged = records;
    for (const Write& write : writes) {
        if (write.time <= ticket)
            continue;
        const auto listed = std::find_if(merged.begin(), merged.end(), [&write](const auto& record) {
            return record.snapshot->GetId() == write.versionId;
        });
        if (!write.record.snapshot) {
            if (listed != merged.end())
                merged.erase(listed);
        } else if (listed == merged.end()) {
            if (write.record.snapshot->GetAppId() == appId)
                merged.prepend(write.record);
        } else if (listed->revision < write.record.revision) {
            *listed = write.record;
        }
    }
    return merged;
}
