#pragma once

#include "SqlConnection.h"
#include "WriteQueue.h"

namespace server {
// The store over a SQL database: reads on a connection per calling thread, writes on the writer's.
class SqlStore : public IStore
{
public:
    explicit SqlStore(std::shared_ptr<const IDialect> dialect);

    QString Kind() const override;
    void Check() override;
    std::optional<Account> FindAccount(const QString& pin) override;
    std::vector<Account> Accounts() override;
    QByteArray PasswordHashOf(const QString& pin) override;
    std::optional<StoredSession> FindSession(const QByteArray& tokenHash) override;
    std::vector<App> AppsEditableBy(const Account& account) override;
    std::optional<App> FindApp(const QString& id) override;
    std::vector<Version> VersionsOf(const QString& appId) override;
    std::optional<Version> FindVersion(const QString& id) override;
    QByteArray ReadBody(const QString& versionId, qint64 revision) override;
    bool Submit(Write write) override;
    void SubmitAndWait(std::function<void(ITransaction&)> act) override;
    WriterFigures Figures() const override;

private:
    SqlConnection& Mine();

    // Calls `read` with this thread's connection, once more when the connection turned out to be lost.
    template <typename Read>
    auto Reading(const Read& read) -> decltype(read(Mine()));

    const std::shared_ptr<const IDialect> dialect;
    const quint64 number; // tells the stores of one process apart
    std::unique_ptr<WriteQueue> writes;
};
} // namespace server
