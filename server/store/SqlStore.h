// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "../sql/SqlConnection.h"
#include "BodyCache.h"
#include "StoreWatch.h"
#include "WriteQueue.h"

namespace server
{
// The store over a SQL database: reads on a connection per calling thread, writes on the writer's.
class SqlStore : public IStore
{
public:
    explicit SqlStore(std::shared_ptr<const IDialect> dialect);
    ~SqlStore() override;

    QString Kind() const override;
    void Watch() override;
    bool Answers() const override { return !watch || watch->Answers(); }
    std::optional<Account> FindAccount(const QString& pin) override;
    std::vector<Account> Accounts() override;
    QByteArray PasswordHashOf(const QString& pin) override;
    std::optional<StoredSession> FindSession(const QByteArray& tokenHash) override;
    std::vector<App> AppsEditableBy(const Account& account) override;
    std::optional<App> FindApp(const QString& id) override;
    std::vector<App> DeletedApps(const Account& account, qint64 since) override;
    VersionList VersionsOf(const QString& appId) override;
    std::optional<Version> FindVersion(const QString& id) override;
    std::vector<ReleasedApp> OnlineApps(const QString& venderId) override;
    std::vector<ReleasedApp> GrayApps(const QString& pin) override;
    std::vector<Release> ReleasesOf(const QString& appId) override;
    bool HasGrayAccess(const QString& appId, const QString& pin) override;
    std::vector<SavedRevision> SavesOf(const QString& appId) override;
    std::vector<Invitation> InvitationsOf(const QString& appId) override;
    std::vector<AuditEntry> Audit(const QString& venderId, const QString& before, int most) override;
    std::vector<UsageCount> UsageOf(const QString& venderId, qint64 fromDay, int most) override;
    QByteArray ReadBody(const QString& versionId, qint64 revision) override;
    bool Submit(Write write) override;
    void SubmitAndWait(std::function<void(ITransaction&)> act) override;
    WriterFigures Figures() const override;

private:
    SqlConnection& Mine();

    // What `keep` remembers is only used where no other server process can change it.
    template <typename Keep>
    void Remember(const Keep& keep);

    // Calls `read` with this thread's connection, once more when the connection turned out to be lost.
    template <typename Read>
    auto Reading(const Read& read) -> decltype(read(Mine()));

    const std::shared_ptr<const IDialect> dialect;
    const quint64 number; // tells the stores of one process apart
    HeadCache heads;
    BodyCache bodies;
    std::unique_ptr<StoreWatch> watch;
    std::unique_ptr<WriteQueue> writes; // last: its thread uses the caches
};
} // namespace server
