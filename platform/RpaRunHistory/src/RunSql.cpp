// SPDX-License-Identifier: Apache-2.0

#include "RunSql_p.h"

#include <QSqlError>
#include <QVariant>

QSqlQuery RunSql::Query(const QString& statement, const QVariantList& values, QString* problem)
{
    if (!db.isOpen())
        return QSqlQuery(); // it was said when it could not be opened
    QSqlQuery query(db);
    bool went = query.prepare(statement);
    for (const QVariant& value : values)
        query.addBindValue(value);
    went = went && query.exec();
    if (!went) {
        const QString code = query.lastError().nativeErrorCode();
        isDamaged =
            code == QLatin1String("11") || code == QLatin1String("26"); // SQLITE_CORRUPT, SQLITE_NOTADB
        *problem = query.lastError().text();
    }
    return query;
}

bool RunSql::Run(const QString& statement, const QVariantList& values, QString* problem)
{
    return Query(statement, values, problem).isActive();
}

bool RunSql::BeginTogether(QString* problem)
{
    if (!db.isOpen())
        return false;
    if (db.transaction())
        return true;
    *problem = db.lastError().text();
    return false;
}

bool RunSql::EndTogether(bool went, QString* problem)
{
    if (went && db.commit())
        return true;
    if (went)
        *problem = db.lastError().text();
    db.rollback();
    return false;
}
