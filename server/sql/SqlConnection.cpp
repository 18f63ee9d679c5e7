// SPDX-License-Identifier: Apache-2.0

#include "SqlConnection.h"

#include "../base/Ids.h"

#include <numeric>

namespace server
{
namespace
{
// A null QString or QByteArray would become NULL; the schema knows only empty texts.
QVariant NeverNull(const QVariant& value)
{
    if (!value.isNull())
        return value;
    return value.type() == QVariant::ByteArray ? QVariant(QByteArray("", 0)) : QVariant(QStringLiteral(""));
}

constexpr auto allowed = std::chrono::seconds(10);
constexpr auto allowedToClose = std::chrono::seconds(1);
constexpr qint64 bytesPerMs = 8 * 1024; // what a body may need besides

qint64 SizeOf(const std::vector<QVariant>& values)
{
    return std::accumulate(values.begin(), values.end(), qint64{0}, [](qint64 sum, const QVariant& value) {
        return sum + (value.type() == QVariant::ByteArray ? value.toByteArray().size() : 0);
    });
}
} // namespace

SqlConnection::SqlConnection(std::shared_ptr<const IDialect> theDialect)
    : dialect(std::move(theDialect)), name(NewId())
{
    Open();
}

SqlConnection::~SqlConnection()
{
    Close();
}

void SqlConnection::Open()
{
    database = dialect->Open(name);
    limit = dialect->LimitCalls(database);
    lost = false;
}

void SqlConnection::Close()
{
    {
        const CallInTime call(limit.get(),
                              allowedToClose); // the database is told of each statement that goes
        prepared.clear();
        database.close();
    }
    limit.reset();
    database = {};
    QSqlDatabase::removeDatabase(name);
}

void SqlConnection::Reopen()
{
    Close();
    Open();
}

CallInTime SqlConnection::Call(qint64 bytes)
{
    return {limit.get(), allowed + std::chrono::milliseconds(bytes / bytesPerMs)};
}

void SqlConnection::Execute(const QString& statement)
{
    const CallInTime call = Call();
    QSqlQuery query(database);
    if (!query.exec(statement))
        Throw(query.lastError());
}

bool SqlConnection::TryExecute(const QString& statement)
{
    const CallInTime call = Call();
    return QSqlQuery(database).exec(statement);
}

SqlRows SqlConnection::Select(const QString& statement, const std::vector<QVariant>& values)
{
    CallInTime call = Call();
    return {Run(statement, values), std::move(call)};
}

int SqlConnection::Change(const QString& statement, const std::vector<QVariant>& values)
{
    const CallInTime call = Call(SizeOf(values));
    QSqlQuery& query = Run(statement, values);
    const int changed = query.numRowsAffected();
    query.finish();
    return changed;
}

QSqlQuery& SqlConnection::Run(const QString& statement, const std::vector<QVariant>& values)
{
    auto& query = prepared[statement];
    if (!query) {
        auto fresh = std::make_shared<QSqlQuery>(database);
        fresh->setForwardOnly(true);
        if (!fresh->prepare(statement))
            Throw(fresh->lastError());
        query = std::move(fresh);
    }
    for (std::size_t i = 0; i < values.size(); ++i)
        query->bindValue(static_cast<int>(i), NeverNull(values[i]));
    if (!query->exec())
        Throw(query->lastError());
    return *query;
}

void SqlConnection::Throw(const QSqlError& error)
{
    const QString text = error.nativeErrorCode() + QLatin1Char(' ') + error.text();
    switch (dialect->Classify(error)) {
    case SqlFault::Unique:
        throw StoreError(StoreFault::Conflict, text);
    case SqlFault::ConnectionLost:
        lost = true;
        throw StoreError(StoreFault::Unavailable, text);
    case SqlFault::Full:
        throw StoreError(StoreFault::Full, text);
    case SqlFault::Busy:
        throw StoreError(StoreFault::Unavailable, text);
    case SqlFault::Other:
        break;
    }
    throw StoreError(StoreFault::Internal, text);
}
} // namespace server
