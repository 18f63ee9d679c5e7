// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "../sql/SqlConnection.h"
#include "Records.h"

#include <optional>

namespace server
{
// The columns of each record, in the order in which the functions below read them.
extern const QString accountColumns;
extern const QString appColumns; // of "app" joined with the accounts of its creator and of who changed it
extern const QString versionColumns;
extern const QString invitationColumns;
extern const QString auditColumns;

// A SELECT of these columns FROM what `rest` begins with.
QString SelectFrom(const QString& columns, const char* rest);
// The same of apps, for which `condition` holds; more may follow it.
QString SelectApps(const char* condition);

Account ReadAccount(const SqlRows& rows);
App ReadApp(const SqlRows& rows);
Version ReadVersion(const SqlRows& rows);
Invitation ReadInvitation(const SqlRows& rows);
AuditEntry ReadAuditEntry(const SqlRows& rows);

// SELECT of the released apps in `state` for which `condition` holds, newest release first; an app may come
// several times.
QString ReleasedAppsIn(VersionState state, const QString& condition);
ReleasedApp ReadReleasedApp(const SqlRows& rows);

// SELECT of the last saves of an app's versions and of those with a note.
QString SavesOfApp();
SavedRevision ReadSavedRevision(const SqlRows& rows);

// SELECT of the gray and online versions of an app, newest release first; one may come several times.
QString ReleasesOfApp();
Release ReadRelease(const SqlRows& rows);

// All rows of a SELECT as records.
template <typename Record>
std::vector<Record> ReadAll(SqlRows rows, Record (*read)(const SqlRows&))
{
    std::vector<Record> records;
    while (rows.Next())
        records.push_back(read(rows));
    return records;
}

// The only row, or nothing.
template <typename Record>
std::optional<Record> ReadOne(SqlRows rows, Record (*read)(const SqlRows&))
{
    if (!rows.Next())
        return std::nullopt;
    return read(rows);
}
} // namespace server
