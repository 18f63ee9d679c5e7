// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "StallGuard.h"
#include "StoreError.h"

#include <QSqlDatabase>
#include <QSqlError>
#include <QStringList>

#include <memory>

namespace server
{
enum class SqlFault
{
    Unique,
    ConnectionLost,
    Busy,
    Full,
    Other
};

// What differs between the databases. Stateless after construction; any thread.
class IDialect
{
public:
    virtual ~IDialect() = default;

    virtual QString Kind() const = 0;

    // Opens a connection of this name for the calling thread, with all its settings made. Throws StoreError.
    virtual QSqlDatabase Open(const QString& connectionName) const = 0;

    // What ends calls on this connection that get no answer; null when the client itself gives up in time.
    virtual std::unique_ptr<ICallLimit> LimitCalls(const QSqlDatabase& connection) const = 0;

    // True when no other server process may work on the same data, so that what was read may be kept.
    virtual bool IsForOneServer() const = 0;

    virtual QString BeginWrite() const = 0;

    // Statements after BeginWrite() that keep other server processes from what a group of writes touches,
    // always in the same order, so that no two wait for each other. Of the first, which everybody runs, there
    // are two forms: a group of which everything is known runs along with others; the second statement has
    // the names, joined by line feeds, as its parameter. Empty where one server works alone.
    struct Locks
    {
        QString alone;
        QString along;
        QString names;
    };
    virtual Locks LockForWrite() const = 0;

    // Begins a transaction that only reads and sees one state of everything.
    virtual QString BeginSnapshot() const = 0;

    // Keeps other server processes from bringing the schema up to date at the same time; run after
    // BeginWrite().
    virtual QStringList LockForMigration() const = 0;

    virtual QString BlobType() const = 0;

    // Statements that make the history of revisions append-only.
    virtual QStringList AppendOnly() const = 0;

    // Expression for the place of a new row of this table in the order in which rows come to the store.
    virtual QString NextPosition(const QString& table) const = 0;

    // Statements after which new rows stand behind those that the tables have.
    virtual QStringList ContinuePositions() const = 0;

    // Added to the SELECT of a row that the transaction is going to change.
    virtual QString ForUpdate() const = 0;

    virtual SqlFault Classify(const QSqlError& error) const = 0;
};

// The dialect for the address of a store; throws StoreError when it is none.
std::unique_ptr<IDialect> MakeDialect(const QString& address);

// The dialect for "sqlite:FILE".
std::unique_ptr<IDialect> MakeSqliteDialect(const QString& file);

// The dialect for "postgresql://…"; throws StoreError where the server was built without it.
std::unique_ptr<IDialect> MakePostgresDialect(const QString& url);

// What the databases are called, with the version where it is known beforehand; empty when this server cannot
// use them.
QString SqliteName();
QString PostgresName();
} // namespace server
