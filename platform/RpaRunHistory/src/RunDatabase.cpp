// SPDX-License-Identifier: Apache-2.0

#include "RunDatabase_p.h"
#include "RunFilterSql_p.h"
#include "RunRows_p.h"

#include <QDir>
#include <QFile>
#include <QSqlError>
#include <QSqlQuery>
#include <QUuid>
#include <QVariant>

namespace
{
void SetAside(const QString& path)
{
    const QString aside = path + QStringLiteral(".damaged");
    QFile::remove(aside);
    QFile::rename(path, aside);
    for (const char* companion : {"-wal", "-shm"})
        QFile::remove(path + QLatin1String(companion));
}
} // namespace

RunDatabase::~RunDatabase()
{
    db.close();
    db = QSqlDatabase();
    if (!connection.isEmpty())
        QSqlDatabase::removeDatabase(connection);
}

bool RunDatabase::Open(const QString& folder, QString* problem)
{
    if (!QDir().mkpath(folder)) {
        *problem = QStringLiteral("无法创建文件夹“%1”").arg(QDir::toNativeSeparators(folder));
        return false;
    }
    connection = QUuid::createUuid().toString();
    db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connection);
    const QString path = folder + QStringLiteral("/runs.sqlite");
    if (OpenFile(path, problem))
        return true;
    db.close();
    if (!isDamaged)
        return false;
    SetAside(path);
    problem->clear();
    return OpenFile(path, problem);
}

bool RunDatabase::OpenFile(const QString& path, QString* problem)
{
    db.setDatabaseName(path);
    db.setConnectOptions(QStringLiteral("QSQLITE_BUSY_TIMEOUT=5000"));
    if (!db.open()) {
        *problem = db.lastError().text();
        return false;
    }
    QFile::setPermissions(path, QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    return Prepare(problem);
}

bool RunDatabase::Prepare(QString* problem)
{
    QStringList statements{
        QStringLiteral("PRAGMA auto_vacuum=FULL"), QStringLiteral("PRAGMA journal_mode=WAL"),
        QStringLiteral("PRAGMA synchronous=NORMAL"), QStringLiteral("PRAGMA foreign_keys=ON")};
    statements += RunRows::Schema() + RunSpanTable::Schema();
    for (const QString& statement : qAsConst(statements))
        if (!Run(statement, {}, problem))
            return false;
    QSqlQuery check = Query(QStringLiteral("PRAGMA quick_check(1)"), {}, problem);
    if (!check.next())
        return false;
    isDamaged = check.value(0).toString() != QLatin1String("ok");
    check.finish();
    return !isDamaged && Run(QStringLiteral("UPDATE run SET result=? WHERE result=?"),
                             {int(RpaRunResult::Lost), int(RpaRunResult::Running)}, problem);
}

bool RunDatabase::Begin(RpaRunRecord* record, QString* problem)
{
    const auto text = [](const QString& value) { return value.isNull() ? QStringLiteral("") : value; };
    const QSqlQuery query = Query(
        QStringLiteral("INSERT INTO run(app, app_name, version, version_name, revision, account, origin, "
                       "process, parameters, packages, started) VALUES(?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"),
        {text(record->appId), text(record->appName), text(record->versionId), text(record->versionName),
         record->revision, text(record->account), int(record->origin), text(record->processName),
         RunRows::ToJson(record->parameters), text(record->packages.join(QLatin1Char('\n'))),
         record->started.toMSecsSinceEpoch()},
        problem);
    if (!query.isActive())
        return false;
    record->id = query.lastInsertId().toLongLong();
    return true;
}

bool RunDatabase::AddLines(qint64 id, const QVector<RpaLogLine>& lines, QString* problem)
{
    return Together([&] { return WriteLines(id, lines, problem); }, problem) && TrimLog(id, problem);
}

bool RunDatabase::WriteLines(qint64 id, const QVector<RpaLogLine>& lines, QString* problem)
{
    QSqlQuery query(db);
    query.prepare(QStringLiteral("INSERT OR IGNORE INTO line VALUES(?, ?, ?, ?, ?, ?, ?)"));
    for (const RpaLogLine& line : lines) {
        query.bindValue(0, id);
        query.bindValue(1, line.number);
        query.bindValue(2, line.time.toMSecsSinceEpoch());
        query.bindValue(3, int(line.level));
        query.bindValue(4, line.text.isNull() ? QStringLiteral("") : line.text);
        query.bindValue(5, line.statementId.isNull() ? QStringLiteral("") : line.statementId);
        query.bindValue(6, line.line);
        if (!query.exec()) {
            *problem = query.lastError().text();
            return false;
        }
    }
    return true;
}

bool RunDatabase::TrimLog(qint64 id, QString* problem)
{
    QSqlQuery count =
        Query(QStringLiteral("SELECT count(*), max(number) FROM line WHERE run=?"), {id}, problem);
    if (!count.next())
        return false;
    const qint64 lines = count.value(0).toLongLong();
    const qint64 last = count.value(1).toLongLong();
    count.finish();
    // A flood is not trimmed line by line.
    if (lines <= limits.linesOfARun * 6 / 5)
        return true;
    return Run(QStringLiteral("UPDATE run SET missing_lines=missing_lines+? WHERE id=?"),
               {lines - limits.linesOfARun, id}, problem) &&
           Run(QStringLiteral("DELETE FROM line WHERE run=? AND number NOT IN "
                              "(SELECT number FROM line WHERE run=? AND number<=? "
                              "ORDER BY number DESC LIMIT ?)"),
               {id, id, last, limits.linesOfARun}, problem);
}

bool RunDatabase::End(const RpaRunRecord& record, QString* problem)
{
    const auto text = [](const QString& value) { return value.isNull() ? QStringLiteral("") : value; };
    return Run(QStringLiteral("UPDATE run SET duration=?, result=?, reason=?, trace=?, failed_process=?, "
                              "failed_statement=?, failed_line=?, missing_lines=missing_lines+? WHERE id=?"),
               {record.duration, int(record.result), text(record.reason), text(record.trace),
                text(record.failedProcess), text(record.failedStatement), record.failedLine,
                record.missingLines, record.id},
               problem) &&
           Prune(record.appId, problem);
}

bool RunDatabase::Prune(const QString& appId, QString* problem)
{
    if (!Run(QStringLiteral("DELETE FROM run WHERE app=? AND id NOT IN "
                            "(SELECT id FROM run WHERE app=? ORDER BY id DESC LIMIT ?)"),
             {appId, appId, limits.runsOfAnApp}, problem))
        return false;
    while (BytesUsed() > limits.bytes) {
        const QSqlQuery query = Query(QStringLiteral("DELETE FROM run WHERE id IN (SELECT id FROM run WHERE "
                                                     "id<(SELECT max(id) FROM run) ORDER BY id LIMIT 10)"),
                                      {}, problem);
        if (!query.isActive())
            return false;
        if (query.numRowsAffected() == 0)
            break;
    }
    return true;
}

qint64 RunDatabase::BytesUsed()
{
    qint64 pages = 0;
    qint64 unused = 0;
    qint64 size = 0;
    const std::pair<const char*, qint64*> facts[] = {
        {"page_count", &pages}, {"freelist_count", &unused}, {"page_size", &size}};
    for (const auto& [name, value] : facts) {
        QSqlQuery query(db);
        if (query.exec(QStringLiteral("PRAGMA ") + QLatin1String(name)) && query.next())
            *value = query.value(0).toLongLong();
    }
    return (pages - unused) * size;
}

QVector<RpaRunRecord> RunDatabase::List(const RpaRunFilter& filter, QString* problem)
{
    QVariantList values;
    const QString where = RunFilterSql::Where(filter, &values);
    QSqlQuery query = Query(QStringLiteral("SELECT %1 FROM run WHERE %2 ORDER BY id DESC LIMIT %3")
                                .arg(RunRows::Columns(), where)
                                .arg(qBound(0, filter.most, limits.runsOfAnApp)),
                            values, problem);
    QVector<RpaRunRecord> runs;
    while (query.next())
        runs.append(RunRows::From(query));
    return runs;
}

RpaRunRecord RunDatabase::Read(qint64 id, QString* problem)
{
    QSqlQuery query =
        Query(QStringLiteral("SELECT %1, trace FROM run WHERE id=?").arg(RunRows::Columns()), {id}, problem);
    if (!query.next())
        return {};
    RpaRunRecord record = RunRows::From(query);
    record.trace = query.value(QStringLiteral("trace")).toString();
    return record;
}

QVector<RpaLogLine> RunDatabase::ReadLog(qint64 id, QString* problem)
{
    QSqlQuery query = Query(QStringLiteral("SELECT number, time, level, text, statement, place FROM line "
                                           "WHERE run=? ORDER BY number"),
                            {id}, problem);
    QVector<RpaLogLine> lines;
    while (query.next())
        lines.append(RunRows::LineFrom(query));
    return lines;
}

bool RunDatabase::Remove(qint64 id, QString* problem)
{
    return Run(QStringLiteral("DELETE FROM run WHERE id=?"), {id}, problem);
}

bool RunDatabase::RemoveAll(const QString& appId, QString* problem)
{
    return Run(QStringLiteral("DELETE FROM run WHERE app=?"), {appId}, problem);
}
