// SPDX-License-Identifier: Apache-2.0

#include "Dialect.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSqlQuery>
#include <QVariant>

namespace server
{
namespace
{
// DELETE with EXTRA also syncs the folder after the journal is removed: the only rollback mode in which an
// answered save survived every replayed power cut.
const char* const sqliteSettings[] = {
    "PRAGMA page_size=16384",   "PRAGMA journal_mode=DELETE", "PRAGMA synchronous=EXTRA",
    "PRAGMA foreign_keys=ON",   "PRAGMA trusted_schema=OFF",  "PRAGMA cache_size=-16384",
    "PRAGMA temp_store=MEMORY",
};

class SqliteDialect : public IDialect
{
public:
    explicit SqliteDialect(QString theFile) : file(std::move(theFile)) {}

    QString Kind() const override { return QStringLiteral("sqlite"); }

    QSqlDatabase Open(const QString& connectionName) const override
    {
        KeepPrivate();
        QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connectionName);
        database.setDatabaseName(file);
        database.setConnectOptions(QStringLiteral("QSQLITE_BUSY_TIMEOUT=5000"));
        if (!database.open())
            throw StoreError(StoreFault::Unavailable, database.lastError().text());
        QSqlQuery query(database);
        for (const char* setting : sqliteSettings)
            if (!query.exec(QString::fromLatin1(setting)))
                throw StoreError(StoreFault::Unavailable, query.lastError().text());
        return database;
    }

    std::unique_ptr<ICallLimit> LimitCalls(const QSqlDatabase&) const override { return nullptr; }
    bool IsForOneServer() const override { return true; }
    QString BeginWrite() const override { return QStringLiteral("BEGIN IMMEDIATE"); }
    Locks LockForWrite() const override { return {}; }
    QString BeginSnapshot() const override { return QStringLiteral("BEGIN"); }
    QStringList LockForMigration() const override { return {}; }
    QString BlobType() const override { return QStringLiteral("BLOB"); }
    QString ForUpdate() const override { return {}; }

    QString NextPosition(const QString& table) const override
    {
        return QStringLiteral("(SELECT COALESCE(MAX(position), 0) + 1 FROM %1)").arg(table);
    }

    QStringList ContinuePositions() const override { return {}; }

    QStringList AppendOnly() const override
    {
        return {QStringLiteral("CREATE TRIGGER revision_stays BEFORE UPDATE ON revision BEGIN "
                               "SELECT RAISE(ABORT, 'history is append-only'); END"),
                QStringLiteral("CREATE TRIGGER revision_remains BEFORE DELETE ON revision BEGIN "
                               "SELECT RAISE(ABORT, 'history is append-only'); END")};
    }

    SqlFault Classify(const QSqlError& error) const override
    {
        bool isNumber = false;
        const int code = error.nativeErrorCode().toInt(&isNumber) & 0xff;
        if (!isNumber)
            return SqlFault::Other;
        switch (code) {
        case 19: // SQLITE_CONSTRAINT
            return SqlFault::Unique;
        case 5:  // SQLITE_BUSY
        case 6:  // SQLITE_LOCKED
        case 10: // SQLITE_IOERR
            return SqlFault::Busy;
        case 13: // SQLITE_FULL
            return SqlFault::Full;
        default:
            return SqlFault::Other;
        }
    }

private:
    // The file holds everybody's work: nobody but its owner reads it.
    void KeepPrivate() const
    {
        if (file == QLatin1String(":memory:") || QFileInfo::exists(file))
            return;
        QDir().mkpath(QFileInfo(file).absolutePath());
        QFile fresh(file);
        if (fresh.open(QIODevice::WriteOnly | QIODevice::Append))
            fresh.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    }

    const QString file;
};
} // namespace

std::unique_ptr<IDialect> MakeSqliteDialect(const QString& file)
{
    return std::make_unique<SqliteDialect>(file);
}

QString SqliteName()
{
    const QString connection = QStringLiteral("sqlite-name");
    QString name;
    {
        QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connection);
        database.setDatabaseName(QStringLiteral(":memory:"));
        QSqlQuery query(database.open() ? database : QSqlDatabase());
        if (query.exec(QStringLiteral("SELECT sqlite_version()")) && query.next())
            name = QStringLiteral("SQLite ") + query.value(0).toString();
    }
    QSqlDatabase::removeDatabase(connection);
    return name;
}
} // namespace server
