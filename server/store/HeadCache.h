// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "Records.h"

#include <QHash>

#include <memory>
#include <mutex>
#include <optional>
#include <vector>

namespace server
{
using VersionList = std::shared_ptr<const std::vector<Version>>;

// The heads of apps and versions that were read lately, for a database that no other process changes. A
// reader notes the generation before it asks the database and hands it over with what it found: what a commit
// in between has made old is then not kept. Any thread.
class HeadCache
{
public:
    quint64 Generation() const;

    std::optional<App> FindApp(const QString& id) const { return Find(apps, id); }
    std::optional<Version> FindVersion(const QString& id) const { return Find(versions, id); }
    VersionList FindList(const QString& appId) const { return Find(lists, appId).value_or(nullptr); }

    void Keep(const App& app, quint64 generation) { Put(apps, app.id, app, generation); }
    void Keep(const Version& version, quint64 generation) { Put(versions, version.id, version, generation); }
    void Keep(const QString& appId, const VersionList& list, quint64 generation)
    {
        Put(lists, appId, list, generation);
    }

    // After a commit that changed these apps and versions, before anybody is told of it.
    void Forget(const std::vector<QString>& ids);

private:
    template <typename Record>
    std::optional<Record> Find(const QHash<QString, Record>& records, const QString& id) const
    {
        const std::lock_guard lock(mutex);
        const auto found = records.constFind(id);
        return found == records.constEnd() ? std::nullopt : std::optional<Record>(*found);
    }

    template <typename Record>
    void Put(QHash<QString, Record>& records, const QString& id, const Record& record, quint64 generation)
    {
        constexpr int manyRecords = 20000;
        const std::lock_guard lock(mutex);
        if (generation != current)
            return;
        if (records.size() >= manyRecords)
            records.clear();
        records.insert(id, record);
    }

    mutable std::mutex mutex;
    quint64 current = 0;
    QHash<QString, App> apps;
    QHash<QString, Version> versions;
    QHash<QString, VersionList> lists;
};
} // namespace server
