// SPDX-License-Identifier: Apache-2.0

#include "../base/Loopback.h"
#include "Dialect.h"

#include <QLibrary>
#include <QSqlDriver>
#include <QSqlQuery>
#include <QUrl>
#include <QUrlQuery>
#include <QVariant>

namespace server
{
namespace
{
// A socket file has no host name to verify either.
bool IsOnThisMachine(const QString& host)
{
    return host.isEmpty() || IsLoopback(host);
}

// What a server that is asked for something must have done by when. A lock is waited for in less time than
// the statement, the statement in less than the client: whoever knows best what is wrong says so.
const char* const postgresSettings[] = {
    "SET synchronous_commit=on",
    "SET client_min_messages=warning",
    "SET lock_timeout=4000",
    "SET statement_timeout=9000",
    "SET idle_in_transaction_session_timeout=30000",
};

// Of the client library that Qt's driver has loaded; -1 when it cannot be told.
int SocketOf(const QSqlDatabase& connection)
{
    using SocketFunction = int (*)(const void*);
    static const auto socketOf =
        reinterpret_cast<SocketFunction>(QLibrary::resolve(QStringLiteral("pq"), 5, "PQsocket"));
    const QVariant handle = connection.driver()->handle();
    const bool isKnown = socketOf && qstrcmp(handle.typeName(), "PGconn*") == 0;
    return isKnown ? socketOf(*static_cast<void* const*>(handle.constData())) : -1;
}

class PostgresDialect : public IDialect
{
public:
    explicit PostgresDialect(const QString& address) : url(address)
    {
        if (!url.isValid() || url.path().size() < 2)
            throw StoreError(StoreFault::Unavailable, QStringLiteral("not a PostgreSQL address"));
    }

    QString Kind() const override { return QStringLiteral("postgresql"); }

    QSqlDatabase Open(const QString& connectionName) const override
    {
        QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QPSQL"), connectionName);
        database.setHostName(url.host());
        database.setPort(url.port(5432));
        database.setUserName(url.userName(QUrl::FullyDecoded));
        database.setPassword(url.password(QUrl::FullyDecoded));
        database.setDatabaseName(url.path().mid(1));
        database.setConnectOptions(Options());
        if (!database.open())
            throw StoreError(StoreFault::Unavailable, database.lastError().text());
        QSqlQuery query(database);
        for (const char* setting : postgresSettings)
            if (!query.exec(QString::fromLatin1(setting)))
                throw StoreError(StoreFault::Unavailable, query.lastError().text());
        return database;
    }

    std::unique_ptr<ICallLimit> LimitCalls(const QSqlDatabase& connection) const override
    {
        const int socket = SocketOf(connection);
        return socket < 0 ? nullptr : guard.Guard(socket);
    }

    bool IsForOneServer() const override { return false; }
    QString BeginWrite() const override { return QStringLiteral("BEGIN"); }
    QString BlobType() const override { return QStringLiteral("BYTEA"); }
    QString ForUpdate() const override { return QStringLiteral(" FOR UPDATE"); }

    QString BeginSnapshot() const override
    {
        return QStringLiteral("BEGIN ISOLATION LEVEL REPEATABLE READ READ ONLY");
    }

    // Rows are then locked in whatever order: whoever else wants them waits here already.
    Locks LockForWrite() const override
    {
        return {
            QStringLiteral("SELECT pg_advisory_xact_lock(7242002)"),
            QStringLiteral("SELECT pg_advisory_xact_lock_shared(7242002)"),
            QStringLiteral("WITH given AS (SELECT unnest(string_to_array(?, chr(10))) AS name), "
                           "touched AS (SELECT name FROM given "
                           "UNION SELECT app_id FROM version WHERE id IN (SELECT name FROM given) "
                           "UNION SELECT app_id FROM invitation WHERE id IN (SELECT name FROM given)), "
                           "numbers AS MATERIALIZED (SELECT DISTINCT hashtextextended(name, 7242) AS number "
                           "FROM touched ORDER BY number) "
                           "SELECT count(pg_advisory_xact_lock(number)) FROM numbers")};
    }

    QStringList LockForMigration() const override
    {
        return {QStringLiteral("SELECT pg_advisory_xact_lock(7242001)")};
    }

    QString NextPosition(const QString&) const override
    {
        return QStringLiteral("nextval('store_position')");
    }

    QStringList ContinuePositions() const override
    {
        return {QStringLiteral("CREATE SEQUENCE IF NOT EXISTS store_position"),
                QStringLiteral("SELECT setval('store_position', 1 + GREATEST("
                               "(SELECT COALESCE(MAX(position), 0) FROM version), "
                               "(SELECT COALESCE(MAX(position), 0) FROM release_entry), "
                               "(SELECT COALESCE(MAX(position), 0) FROM invitation), "
                               "(SELECT COALESCE(MAX(position), 0) FROM audit_entry)))")};
    }

    QStringList AppendOnly() const override
    {
        return {
            QStringLiteral("CREATE FUNCTION revision_is_append_only() RETURNS trigger LANGUAGE plpgsql AS "
                           "'BEGIN RAISE EXCEPTION ''history is append-only''; END'"),
            QStringLiteral("CREATE TRIGGER revision_stays BEFORE UPDATE OR DELETE ON revision "
                           "FOR EACH ROW EXECUTE FUNCTION revision_is_append_only()")};
    }

    SqlFault Classify(const QSqlError& error) const override
    {
        const QString code = error.nativeErrorCode();
        if (code == QLatin1String("23505"))
            return SqlFault::Unique;
        // 08: connection, 57P: the server is being stopped; without a code libpq lost the connection by
        // itself.
        if (code.isEmpty() || code.startsWith(QLatin1String("08")) || code.startsWith(QLatin1String("57P")))
            return SqlFault::ConnectionLost;
        if (code == QLatin1String("53100"))
            return SqlFault::Full;
        // 40: serialisation and deadlock, 53: out of memory or connections, 55: lock not available, 57014:
        // took too long
        if (code.startsWith(QLatin1String("40")) || code.startsWith(QLatin1String("53")) ||
            code.startsWith(QLatin1String("55")) || code == QLatin1String("57014"))
            return SqlFault::Busy;
        return SqlFault::Other;
    }

private:
    QString Options() const
    {
        QStringList options{QStringLiteral("connect_timeout=5")};
        if (!IsOnThisMachine(url.host()))
            options << QStringLiteral("sslmode=verify-full");
        const QUrlQuery query(url);
        for (const auto& name :
             {QStringLiteral("sslrootcert"), QStringLiteral("sslcert"), QStringLiteral("sslkey")})
            if (query.hasQueryItem(name))
                options << name + QLatin1Char('=') + query.queryItemValue(name, QUrl::FullyDecoded);
        return options.join(QLatin1Char(';'));
    }

    const QUrl url;
    mutable StallGuard guard;
};
} // namespace

std::unique_ptr<IDialect> MakePostgresDialect(const QString& url)
{
    return std::make_unique<PostgresDialect>(url);
}

QString PostgresName()
{
    // Built with it, but the driver may be missing where the server was brought to.
    return QSqlDatabase::isDriverAvailable(QStringLiteral("QPSQL")) ? QStringLiteral("PostgreSQL")
                                                                    : QString();
}
} // namespace server
