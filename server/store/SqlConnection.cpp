#include "SqlConnection.h"

#include "../base/Ids.h"

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
} // namespace

SqlConnection::SqlConnection(std::shared_ptr<const IDialect> theDialect)
    : dialect(std::move(theDialect)), name(NewId()), database(dialect->Open(name))
{
}

SqlConnection::~SqlConnection()
{
    prepared.clear();
    database.close();
    database = {};
    QSqlDatabase::removeDatabase(name);
}

void SqlConnection::Reopen()
{
    prepared.clear();
    database.close();
    database = {};
    QSqlDatabase::removeDatabase(name);
    database = dialect->Open(name);
    lost = false;
}

void SqlConnection::Execute(const QString& statement)
{
    QSqlQuery query(database);
    if (!query.exec(statement))
        Throw(query.lastError());
}

bool SqlConnection::TryExecute(const QString& statement)
{
    return QSqlQuery(database).exec(statement);
}

SqlRows SqlConnection::Select(const QString& statement, const std::vector<QVariant>& values)
{
    return SqlRows(Run(statement, values));
}

int SqlConnection::Change(const QString& statement, const std::vector<QVariant>& values)
{
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
    case SqlFault::Busy:
        throw StoreError(StoreFault::Unavailable, text);
    case SqlFault::Other:
        break;
    }
    throw StoreError(StoreFault::Internal, text);
}
} // namespace server
