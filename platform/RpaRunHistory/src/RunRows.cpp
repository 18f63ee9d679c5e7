// SPDX-License-Identifier: Apache-2.0

#include "RunRows_p.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QTimeZone>
#include <QVariant>

namespace
{
QDateTime TimeOf(const QVariant& milliseconds)
{
    return QDateTime::fromMSecsSinceEpoch(milliseconds.toLongLong(), Qt::UTC);
}
} // namespace

QStringList RunRows::Schema()
{
    return {
        QStringLiteral("CREATE TABLE IF NOT EXISTS run("
                       "id INTEGER PRIMARY KEY AUTOINCREMENT, app TEXT NOT NULL, app_name TEXT NOT NULL, "
                       "version TEXT NOT NULL, version_name TEXT NOT NULL, revision INTEGER NOT NULL, "
                       "account TEXT NOT NULL, origin INTEGER NOT NULL, process TEXT NOT NULL, "
                       "parameters TEXT NOT NULL, packages TEXT NOT NULL, started INTEGER NOT NULL, "
                       "duration INTEGER NOT NULL DEFAULT 0, result INTEGER NOT NULL DEFAULT 0, "
                       "reason TEXT NOT NULL DEFAULT '', trace TEXT NOT NULL DEFAULT '', "
                       "failed_process TEXT NOT NULL DEFAULT '', failed_statement TEXT NOT NULL DEFAULT '', "
                       "failed_line INTEGER NOT NULL DEFAULT 0, missing_lines INTEGER NOT NULL DEFAULT 0)"),
        QStringLiteral("CREATE INDEX IF NOT EXISTS run_of_app ON run(app, id)"),
        QStringLiteral("CREATE TABLE IF NOT EXISTS line("
                       "run INTEGER NOT NULL REFERENCES run(id) ON DELETE CASCADE, number INTEGER NOT NULL, "
                       "time INTEGER NOT NULL, level INTEGER NOT NULL, text TEXT NOT NULL, "
                       "statement TEXT NOT NULL, place INTEGER NOT NULL, PRIMARY KEY(run, number)) "
                       "WITHOUT ROWID"),
    };
}

QString RunRows::Columns()
{
    return QStringLiteral(
        "id, app, app_name, version, version_name, revision, account, origin, process, parameters, "
        "packages, started, duration, result, reason, failed_process, failed_statement, failed_line, "
        "missing_lines");
}

RpaRunRecord RunRows::From(const QSqlQuery& row)
{
    RpaRunRecord record;
    int column = 0;
    const auto next = [&row, &column] { return row.value(column++); };
    record.id = next().toLongLong();
    record.appId = next().toString();
    record.appName = next().toString();
    record.versionId = next().toString();
    record.versionName = next().toString();
    record.revision = next().toInt();
    record.account = next().toString();
    record.origin = EnumOf(next().toInt(), RpaRunOrigin::Page);
    record.processName = next().toString();
    record.parameters = ValuesOf(next().toByteArray());
    record.packages = next().toString().split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    record.started = TimeOf(next());
    record.duration = next().toLongLong();
    record.result = EnumOf(next().toInt(), RpaRunResult::Lost);
    record.reason = next().toString();
    record.failedProcess = next().toString();
    record.failedStatement = next().toString();
    record.failedLine = next().toInt();
    record.missingLines = next().toLongLong();
    return record;
}

RpaLogLine RunRows::LineFrom(const QSqlQuery& row)
{
    RpaLogLine line;
    line.number = row.value(0).toLongLong();
    line.time = TimeOf(row.value(1)).toLocalTime();
    line.level = EnumOf(row.value(2).toInt(), RpaLogLevel::Error);
    line.text = row.value(3).toString();
    line.statementId = row.value(4).toString();
    line.line = row.value(5).toInt();
    return line;
}

QString RunRows::ToJson(const QVector<RpaRunValue>& values)
{
    QJsonArray pairs;
    for (const RpaRunValue& value : values)
        pairs.append(QJsonArray{value.name, value.text});
    return QString::fromUtf8(QJsonDocument(pairs).toJson(QJsonDocument::Compact));
}

QVector<RpaRunValue> RunRows::ValuesOf(const QByteArray& json)
{
    QVector<RpaRunValue> values;
    for (const QJsonValue pair : QJsonDocument::fromJson(json).array())
        values.append({pair[0].toString(), pair[1].toString()});
    return values;
}
