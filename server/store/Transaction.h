// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "Records.h"

#include <optional>
#include <vector>

namespace server
{
class IDialect;
class SqlConnection;

// What a write may read and change. All of it is one transaction with the writes that waited at the same
// time, but a write that throws leaves nothing behind. Throws StoreError.
class Transaction
{
public:
    // On the writer's connection, inside its open transaction. `changedIds` gets the ids of the apps and
    // versions that are changed.
    Transaction(SqlConnection& connection, const IDialect& dialect, std::vector<QString>& changedIds);

    std::optional<Account> FindAccount(const QString& pin);
    std::optional<App> FindApp(const QString& id); // not a deleted one
    std::optional<App> FindDeletedApp(const QString& id);
    bool AppNameTaken(const QString& venderId, const QString& name);
    void InsertApp(const App& app);
    // Its name, its tags, and who changed it when.
    void ChangeApp(const App& app);
    // Into the bin with all its versions; 0: out of it, as they were.
    void SetAppDeleted(const QString& id, qint64 deletedAt, const QString& pin);
    // A deleted app is found by nobody any more. What the store holds of it stays, as all history does.
    void PurgeApp(const QString& id, qint64 now);

    std::optional<Version> FindVersion(const QString& id); // also a deleted one
    bool DevelopNameTaken(const QString& appId, const QString& name, const QString& exceptVersionId);
    std::vector<Version> VersionsOf(const QString& appId); // oldest creation first, without deleted ones
    void InsertVersion(const Version& version, const QByteArray& body);

    // Inserts `copy` with the content of the newest revision of `original`.
    void InsertCopy(const Version& copy, const Version& original);

    // Adds the revision `version.revision` to the history and makes it the head.
    void AddRevision(const Version& version, const QByteArray& body);
    std::optional<QString> WhoSaved(const QString& versionId, qint64 revision);
    void SetNote(const QString& versionId, qint64 revision, const QString& note, qint64 now);
    void SetDeleted(const Version& version, qint64 deletedAt, const QString& pin); // 0: restored

    // Moves the version to a state, from which it is not taken back then, and notes who did it.
    void Release(const Version& version, VersionState to, const QString& pin, qint64 now);

    // What users have of the app in this state: not a deleted one, nor one that was taken back.
    std::optional<Version> NewestReleased(const QString& appId, VersionState state);
    // Takes all versions of the app in this state back from users, deleted ones too; Release() into the state
    // that one has gives that one to them again.
    void WithdrawAll(const QString& appId, VersionState state, qint64 now);

    void InsertInvitation(const Invitation& invitation);
    std::optional<Invitation> FindInvitation(const QString& id);
    std::optional<Invitation> FindInvitationByCode(const QString& code);
    std::vector<Invitation> InvitationsOf(const QString& appId);
    void RevokeInvitation(const QString& id, qint64 now);
    bool HasGrayAccess(const QString& appId, const QString& pin);

    // Opens the gray versions of the invitation's app to the account and counts a use of it.
    void GrantGrayAccess(const Invitation& invitation, const QString& pin, qint64 now);

    // `entry` without id; gets one.
    void Note(const AuditEntry& entry);

    std::optional<StoredAnswer> FindAnswer(const QString& pin, const QByteArray& key);
    void InsertAnswer(const QString& pin, const QByteArray& key, const StoredAnswer& answer, qint64 now);

    // How many events of that day the store has of the account.
    qint64 UsageOn(const QString& pin, qint64 day);
    // False when it has one of that id already.
    bool InsertUsage(const QString& pin, const UsageEvent& event);

    void UpsertAccount(const Account& account, const QByteArray& passwordHash, qint64 now);
    void SetRoles(const QString& pin, const QStringList& roles);
    void SetClosed(const QString& pin, qint64 closedAt); // 0: open again
    void InsertSession(const StoredSession& session);
    void TouchSession(const QByteArray& tokenHash, qint64 now);
    void RemoveSession(const QByteArray& tokenHash);
    void RemoveSessionsOf(const QString& pin);
    // A bounded number of them, so that nobody waits for long; false when there may be more.
    bool RemoveOutdated(qint64 sessionsExpiredBefore, qint64 answersOlderThan, qint64 usageBeforeDay);

private:
    void InsertHead(const Version& version);
    void InsertRevision(const Version& version, const QByteArray& body);
    void TouchApp(const Version& changed);

    SqlConnection& connection;
    const IDialect& dialect;
    std::vector<QString>& changedIds;
};
} // namespace server
