#pragma once

#include "Dialect.h"

#include <QHash>
#include <QSqlQuery>
#include <QVariant>

#include <memory>
#include <vector>

namespace server
{
// The rows of a SELECT, read forward. Ends the statement when it goes, so that SQLite lets go of its lock.
class SqlRows
{
public:
    explicit SqlRows(QSqlQuery& theQuery) : query(&theQuery) {}
    SqlRows(SqlRows&& other) noexcept : query(std::exchange(other.query, nullptr)) {}
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
    QSqlQuery& Run(const QString& statement, const std::vector<QVariant>& values);
    [[noreturn]] void Throw(const QSqlError& error);

    const std::shared_ptr<const IDialect> dialect;
    const QString name;
    QSqlDatabase database;
    QHash<QString, std::shared_ptr<QSqlQuery>> prepared;
    bool lost = false;
};
} // namespace server
