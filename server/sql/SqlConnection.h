// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "Dialect.h"

#include <QHash>
#include <QSqlQuery>
#include <QVariant>

#include <memory>
#include <vector>

namespace server
{
// A call to the database that ends in time, while this lives.
class CallInTime
{
public:
    CallInTime(ICallLimit* theLimit, std::chrono::milliseconds allowed) : limit(theLimit)
    {
        if (limit)
            limit->Begin(allowed);
    }
    CallInTime(CallInTime&& other) noexcept : limit(std::exchange(other.limit, nullptr)) {}
    CallInTime& operator=(CallInTime&&) = delete;
    ~CallInTime()
    {
        if (limit)
            limit->End();
    }

private:
    ICallLimit* limit;
};

// The rows of a SELECT, read forward. Ends the statement when it goes, so that SQLite lets go of its lock.
class SqlRows
{
public:
    SqlRows(QSqlQuery& theQuery, CallInTime theCall) : call(std::move(theCall)), query(&theQuery) {}
    SqlRows(SqlRows&& other) noexcept
        : call(std::move(other.call)), query(std::exchange(other.query, nullptr))
    {
    }
    SqlRows& operator=(SqlRows&&) = delete;
    ~SqlRows()
    {
        if (query)
            query->finish();
    }

    bool Next() { return query->next(); }
    QVariant Value(int column) const { return query->value(column); }
    QString Text(int column) const { return query->value(column).toString(); }
    qint64 Number(int column) const { return query->value(column).toLongLong(); }
    QByteArray Bytes(int column) const { return query->value(column).toByteArray(); }

private:
    CallInTime call; // reading the rows may wait for the database too
    QSqlQuery* query;
};

// One database connection with its prepared statements. Lives and is used on one thread. Throws StoreError.
class SqlConnection
{
public:
    explicit SqlConnection(std::shared_ptr<const IDialect> dialect);
    ~SqlConnection();
    SqlConnection(const SqlConnection&) = delete;
    SqlConnection& operator=(const SqlConnection&) = delete;

    // Statements without parameters, not prepared.
    void Execute(const QString& statement);
    bool TryExecute(const QString& statement);

    SqlRows Select(const QString& statement, const std::vector<QVariant>& values);
    int Change(const QString& statement, const std::vector<QVariant>& values); // number of changed rows

    // True after a statement failed because the connection is gone.
    bool IsLost() const { return lost; }
    void Reopen();

private:
    void Open();
    void Close();
    CallInTime Call(qint64 bytes = 0);
    QSqlQuery& Run(const QString& statement, const std::vector<QVariant>& values);
    [[noreturn]] void Throw(const QSqlError& error);

    const std::shared_ptr<const IDialect> dialect;
    const QString name;
    QSqlDatabase database;
    std::unique_ptr<ICallLimit> limit;
    QHash<QString, std::shared_ptr<QSqlQuery>> prepared;
    bool lost = false;
};
} // namespace server
