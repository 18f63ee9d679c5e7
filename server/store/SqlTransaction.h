// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "../sql/SqlConnection.h"
#include "IStore.h"

namespace server
{
// The writes of both databases, on the writer's connection inside its open transaction.
class SqlTransaction : public ITransaction
{
public:
    // `changedIds` gets the ids of the apps and versions that are changed.
    SqlTransaction(SqlConnection& connection, const IDialect& dialect, std::vector<QString>& changedIds);

    std::optional<Account> FindAccount(const QString& pin) override;
    std::optional<App> FindApp(const QString& id) override;
    std::optional<App> FindDeletedApp(const QString& id) override;
    bool AppNameTaken(const QString& venderId, const QString& name) override;
    void InsertApp(const App& app) override;
    void ChangeApp(const App& app) override;
    void SetAppDeleted(const QString& id, qint64 deletedAt, const QString& pin) override;
    void PurgeApp(const QString& id, qint64 now) override;

    std::optional<Version> FindVersion(const QString& id) override;
    bool DevelopNameTaken(const QString& appId, const QString& name, const QString& exceptVersionId) override;
    std::vector<Version> VersionsOf(const QString& appId) override;
    void InsertVersion(const Version& version, const QByteArray& body) override;
    void InsertCopy(const Version& copy, const Version& original) override;
    void AddRevision(const Version& version, const QByteArray& body) override;
    std::optional<QString> WhoSaved(const QString& versionId, qint64 revision) override;
    void SetNote(const QString& versionId, qint64 revision, const QString& note, qint64 now) override;
    void SetDeleted(const Version& version, qint64 deletedAt, const QString& pin) override;
    void Release(const Version& version, VersionState to, const QString& pin, qint64 now) override;

    std::optional<Version> NewestReleased(const QString& appId, VersionState state) override;
    void WithdrawAll(const QString& appId, VersionState state, qint64 now) override;
    void InsertInvitation(const Invitation& invitation) override;
    std::optional<Invitation> FindInvitation(const QString& id) override;
    std::optional<Invitation> FindInvitationByCode(const QString& code) override;
    std::vector<Invitation> InvitationsOf(const QString& appId) override;
    void RevokeInvitation(const QString& id, qint64 now) override;
    bool HasGrayAccess(const QString& appId, const QString& pin) override;
    void GrantGrayAccess(const Invitation& invitation, const QString& pin, qint64 now) override;
    void Note(const AuditEntry& entry) override;

    std::optional<StoredAnswer> FindAnswer(const QString& pin, const QByteArray& key) override;
    void InsertAnswer(const QString& pin, const QByteArray& key, const StoredAnswer& answer,
                      qint64 now) override;

    qint64 UsageOn(const QString& pin, qint64 day) override;
    bool InsertUsage(const QString& pin, const UsageEvent& event) override;

    void UpsertAccount(const Account& account, const QByteArray& passwordHash, qint64 now) override;
    void SetRoles(const QString& pin, const QStringList& roles) override;
    void SetClosed(const QString& pin, qint64 closedAt) override;
    void InsertSession(const StoredSession& session) override;
    void TouchSession(const QByteArray& tokenHash, qint64 now) override;
    void RemoveSession(const QByteArray& tokenHash) override;
    void RemoveSessionsOf(const QString& pin) override;
    bool RemoveOutdated(qint64 sessionsExpiredBefore, qint64 answersOlderThan,
                        qint64 usageBeforeDay) override;

private:
    void InsertHead(const Version& version);
    void InsertRevision(const Version& version, const QByteArray& body);
    void TouchApp(const Version& changed);

    SqlConnection& connection;
    const IDialect& dialect;
    std::vector<QString>& changedIds;
};
} // namespace server
