// SPDX-License-Identifier: Apache-2.0

#include "Store.h"

#include "../base/Digest.h"
#include "../sql/Schema.h"
#include "SqlRecords.h"
#include "StoreWatch.h"
#include "WriteQueue.h"

#include <QSet>
#include <QThreadStorage>

#include <algorithm>
#include <atomic>
#include <future>
#include <unordered_map>

namespace server
{
namespace
{
quint64 NextNumber()
{
    static std::atomic<quint64> last{0};
    return ++last;
}

// By number of the store. QtSql binds a connection to the thread that opened it.
using Connections = std::unordered_map<quint64, std::unique_ptr<SqlConnection>>;

Connections& ConnectionsOfThisThread()
{
    // Not thread_local: that ends after Qt has let go of the thread, and on Windows within a lock of the
    // system's.
    static QThreadStorage<Connections> connections;
    return connections.localData();
}

// Of entries with the newest first, the first of each id.
template <typename Record, typename Id>
std::vector<Record> NewestOfEach(std::vector<Record> all, const Id& idOf)
{
    QSet<QString> seen;
    const auto isOlder = [&seen, &idOf](const Record& record) {
        const bool known = seen.contains(idOf(record));
        seen.insert(idOf(record));
        return known;
    };
    std::vector<Record> newest;
    std::remove_copy_if(all.begin(), all.end(), std::back_inserter(newest), isOlder);
    return newest;
}

QString AppIdOf(const ReleasedApp& released)
{
    return released.app.id;
}

} // namespace

Store::Store(std::shared_ptr<const IDialect> theDialect)
    : dialect(std::move(theDialect)), number(NextNumber())
{
    SqlConnection connection(dialect);
    MigrateSchema(connection, *dialect);
    writes = std::make_unique<WriteQueue>(
        dialect, [this](const auto& changedIds) { heads.Forget(changedIds); }, [this] { return Answers(); });
}

// Other threads' connections end with their threads.
Store::~Store()
{
    ConnectionsOfThisThread().erase(number);
}

SqlConnection& Store::Mine()
{
    if (!Answers())
        throw StoreError(StoreFault::Unavailable, QStringLiteral("the database does not answer"));
    auto& mine = ConnectionsOfThisThread()[number];
    if (!mine)
        mine = std::make_unique<SqlConnection>(dialect);
    else if (mine->IsLost())
        mine->Reopen();
    return *mine;
}

template <typename Read>
auto Store::Reading(const Read& read) -> decltype(read(Mine()))
{
    SqlConnection& connection = Mine();
    try {
        return read(connection);
    } catch (const StoreError&) {
        if (!connection.IsLost())
            throw;
    }
    return read(Mine());
}

template <typename Record>
std::vector<Record> Store::All(const QString& sql, const std::vector<QVariant>& values,
                               Record (*read)(const SqlRows&))
{
    return Reading([&](SqlConnection& c) { return ReadAll(c.Select(sql, values), read); });
}

template <typename Record>
std::optional<Record> Store::One(const QString& sql, const std::vector<QVariant>& values,
                                 Record (*read)(const SqlRows&))
{
    return Reading([&](SqlConnection& c) { return ReadOne(c.Select(sql, values), read); });
}

QString Store::Kind() const
{
    return dialect->Kind();
}

void Store::Watch()
{
    watch = std::make_unique<StoreWatch>(dialect);
}

bool Store::Answers() const
{
    return !watch || watch->Answers();
}

std::optional<Account> Store::FindAccount(const QString& pin)
{
    static const QString sql = SelectFrom(accountColumns, "account WHERE pin = ?");
    return One(sql, {pin}, ReadAccount);
}

std::vector<Account> Store::Accounts()
{
    static const QString sql = SelectFrom(accountColumns, "account ORDER BY pin");
    return All(sql, {}, ReadAccount);
}

QByteArray Store::PasswordHashOf(const QString& pin)
{
    return Reading([&](SqlConnection& c) {
        auto rows = c.Select(
            QStringLiteral("SELECT password_hash FROM account WHERE pin = ? AND closed_at = 0"), {pin});
        return rows.Next() ? rows.Bytes(0) : QByteArray();
    });
}

std::optional<StoredSession> Store::FindSession(const QByteArray& tokenHash)
{
    static const QString sql = QStringLiteral("SELECT token_hash, pin, created_at, last_used_at, expires_at "
                                              "FROM session WHERE token_hash = ?");
    const auto read = [](const SqlRows& rows) {
        return StoredSession{rows.Bytes(0), rows.Text(1), rows.Number(2), rows.Number(3), rows.Number(4)};
    };
    return One(sql, {tokenHash}, +read);
}

std::vector<App> Store::AppsEditableBy(const Account& account)
{
    static const QString order = QStringLiteral(") ORDER BY app.changed_at DESC, app.id DESC");
    static const QString own = SelectApps("app.deleted_at = 0 AND (app.creator = ?");
    static const QString vender = own + QStringLiteral(" OR app.vender_id = ?");
    return account.IsAuthor() ? All(vender + order, {account.pin, account.venderId}, ReadApp)
                              : All(own + order, {account.pin}, ReadApp);
}

template <typename Keep>
void Store::Remember(const Keep& keep)
{
    if (dialect->IsForOneServer())
        keep();
}

std::optional<App> Store::FindApp(const QString& id)
{
    static const QString sql = SelectApps("app.id = ? AND app.deleted_at = 0");
    if (auto known = heads.FindApp(id))
        return known;
    const quint64 generation = heads.Generation();
    auto app = One(sql, {id}, ReadApp);
    if (app)
        Remember([&] { heads.Keep(*app, generation); });
    return app;
}

std::vector<App> Store::DeletedApps(const Account& account, qint64 since)
{
    static const QString sql =
        SelectApps("app.deleted_at <> 0 AND app.deleted_at >= ? AND app.purged_at = 0 "
                   "AND (app.creator = ? OR app.vender_id = ?) ORDER BY app.deleted_at DESC, app.id");
    const QString vender = account.IsAdministrator() ? account.venderId : QString();
    return All(sql, {since, account.pin, vender}, ReadApp);
}

VersionList Store::VersionsOf(const QString& appId)
{
    static const QString sql =
        SelectFrom(versionColumns, "version WHERE app_id = ? AND deleted_at = 0 ORDER BY position DESC");
    if (auto known = heads.FindList(appId))
        return known;
    const quint64 generation = heads.Generation();
    VersionList list = std::make_shared<const std::vector<Version>>(All(sql, {appId}, ReadVersion));
    Remember([&] { heads.Keep(appId, list, generation); });
    return list;
}

std::optional<Version> Store::FindVersion(const QString& id)
{
    static const QString sql = SelectFrom(versionColumns, "version WHERE id = ? AND deleted_at = 0");
    if (auto known = heads.FindVersion(id))
        return known;
    const quint64 generation = heads.Generation();
    auto version = One(sql, {id}, ReadVersion);
    if (version)
        Remember([&] { heads.Keep(*version, generation); });
    return version;
}

std::vector<ReleasedApp> Store::OnlineApps(const QString& venderId)
{
    static const QString sql = ReleasedAppsIn(VersionState::Online, QStringLiteral("app.vender_id = ?"));
    return NewestOfEach(All(sql, {venderId}, ReadReleasedApp), AppIdOf);
}

std::vector<ReleasedApp> Store::GrayApps(const QString& pin)
{
    static const QString sql = ReleasedAppsIn(
        VersionState::Gray,
        QStringLiteral("app.id IN (SELECT app_id FROM gray_access WHERE gray_access.pin = ?)"));
    return NewestOfEach(All(sql, {pin}, ReadReleasedApp), AppIdOf);
}

std::vector<Release> Store::ReleasesOf(const QString& appId)
{
    static const QString sql = ReleasesOfApp();
    return NewestOfEach(All(sql, {appId}, ReadRelease),
                        [](const Release& release) { return release.version.id; });
}

bool Store::HasGrayAccess(const QString& appId, const QString& pin)
{
    static const QString sql = SelectFrom(QStringLiteral("1"), "gray_access WHERE app_id = ? AND pin = ?");
    return Reading([&](SqlConnection& c) { return c.Select(sql, {appId, pin}).Next(); });
}

std::vector<SavedRevision> Store::SavesOf(const QString& appId)
{
    static const QString sql = SavesOfApp();
    return All(sql, {appId}, ReadSavedRevision);
}

std::vector<Invitation> Store::InvitationsOf(const QString& appId)
{
    static const QString sql =
        SelectFrom(invitationColumns, "invitation WHERE app_id = ? ORDER BY position DESC");
    return All(sql, {appId}, ReadInvitation);
}

std::vector<AuditEntry> Store::Audit(const QString& venderId, const QString& before, int most)
{
    static const QString sql = SelectFrom(auditColumns, "audit_entry JOIN app ON app.id = audit_entry.app_id "
                                                        "WHERE app.vender_id = ? AND (? = '' OR "
                                                        "audit_entry.position < (SELECT position FROM "
                                                        "audit_entry WHERE id = ?)) "
                                                        "ORDER BY audit_entry.position DESC LIMIT ?");
    return All(sql, {venderId, before, before, most}, ReadAuditEntry);
}

std::vector<UsageCount> Store::UsageOf(const QString& venderId, qint64 fromDay, int most)
{
    static const QString sql =
        QStringLiteral("SELECT usage_event.event, usage_event.day, COUNT(*) FROM usage_event "
                       "JOIN account ON account.pin = usage_event.pin "
                       "WHERE account.vender_id = ? AND usage_event.day >= ? "
                       "GROUP BY usage_event.day, usage_event.event "
                       "ORDER BY usage_event.day DESC, usage_event.event LIMIT ?");
    const auto read = [](const SqlRows& rows) {
        return UsageCount{rows.Text(0), rows.Number(1), rows.Number(2)};
    };
    return All(sql, {venderId, fromDay, most}, +read);
}

QByteArray Store::ReadBody(const QString& versionId, qint64 revision)
{
    static const QString sql =
        QStringLiteral("SELECT sha256, size, body FROM revision WHERE version_id = ? AND revision = ?");
    QByteArray known = bodies.Find(versionId, revision);
    if (!known.isNull())
        return known;
    QByteArray body = Reading([&](SqlConnection& c) {
        auto rows = c.Select(sql, {versionId, revision});
        if (!rows.Next())
            throw StoreError(StoreFault::Corrupt,
                             QStringLiteral("revision %1/%2 is missing").arg(versionId).arg(revision));
        QByteArray stored = rows.Bytes(2);
        if (stored.size() != rows.Number(1) || Sha256(stored) != rows.Bytes(0))
            throw StoreError(StoreFault::Corrupt,
                             QStringLiteral("revision %1/%2 is damaged").arg(versionId).arg(revision));
        return stored;
    });
    bodies.Keep(versionId, revision, body);
    return body;
}

bool Store::Submit(Write write)
{
    return writes->Submit(std::move(write));
}

void Store::SubmitAndWait(std::function<void(Transaction&)> act)
{
    std::promise<void> ended;
    const auto done = [&ended](const std::exception_ptr& failure) {
        if (failure)
            ended.set_exception(failure);
        else
            ended.set_value();
    };
    if (!Submit({std::move(act), done, 0}))
        throw StoreError(StoreFault::Unavailable, QStringLiteral("too many writes wait"));
    ended.get_future().get();
}

WriterFigures Store::Figures() const
{
    return writes->Figures();
}

std::unique_ptr<IDialect> MakeDialect(const QString& address)
{
    static const QString sqlite = QStringLiteral("sqlite:");
    if (address.startsWith(sqlite))
        return MakeSqliteDialect(address.mid(sqlite.size()));
    if (address.startsWith(QLatin1String("postgresql://")))
        return MakePostgresDialect(address);
    throw StoreError(StoreFault::Unavailable, QStringLiteral("a store is sqlite:FILE or postgresql://..."));
}

std::unique_ptr<Store> OpenStore(const QString& address)
{
    return std::make_unique<Store>(MakeDialect(address));
}
} // namespace server
