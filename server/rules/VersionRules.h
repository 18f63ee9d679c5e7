// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "AppRules.h"

namespace server
{
// What an author saves.
struct VersionDraft
{
    QString name; // null: keeps the name it has (only when it overwrites)
    QString description;
    QString apiVersion;
    QByteArray sha256; // of the body, raw
    QByteArray body;
};

// The rules of versions; each runs inside a write of the store.
namespace rules
{
Version CreateVersion(Transaction& store, const Account& account, const QString& appId,
                      const VersionDraft& draft, qint64 now);
Version OverwriteVersion(Transaction& store, const Account& account, const QString& versionId,
                         qint64 basedOnRevision, const VersionDraft& draft, qint64 now);

// Soft: an administrator of the vendor can bring it back for 30 days.
Version DeleteVersion(Transaction& store, const Account& account, const QString& versionId,
                      qint64 basedOnRevision, qint64 now);
Version RestoreVersion(Transaction& store, const Account& account, const QString& versionId, qint64 now);

// The version that `account` may edit, not a deleted one.
Version EditableVersion(Transaction& store, const Account& account, const QString& versionId);

// The refusal of a change that is based on an older revision; names who was first.
Refusal ChangedBySomebodyElse(Transaction& store, const Version& version);
} // namespace rules
} // namespace server
