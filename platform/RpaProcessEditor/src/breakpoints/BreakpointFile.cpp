// SPDX-License-Identifier: Apache-2.0

#include "BreakpointFile_p.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>
#include <QStandardPaths>
#include <QThreadPool>

#include <algorithm>

namespace
{
constexpr qint64 breakpointBytesAtMost = 16 * 1024 * 1024;

// By app id: what the disk has or will have.
QHash<QString, QVector<RpaBreakpoint>>& KnownBreakpoints()
{
    static QHash<QString, QVector<RpaBreakpoint>> known;
    return known;
}

// One thread: the newest state is written last.
QThreadPool& BreakpointWriter()
{
    static QThreadPool pool;
    pool.setMaxThreadCount(1);
    return pool;
}

QString BreakpointFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation) +
           QStringLiteral("/breakpoints");
}

QString BreakpointPath(const QString& appId)
{
    const QByteArray name = QCryptographicHash::hash(appId.toUtf8(), QCryptographicHash::Sha256).toHex();
    return BreakpointFolder() + QLatin1Char('/') + QString::fromLatin1(name) + QStringLiteral(".json");
}

QJsonObject ToObject(const RpaBreakpoint& point)
{
    return {{QStringLiteral("process"), point.place.processName},
            {QStringLiteral("statement"), point.place.statementId},
            {QStringLiteral("line"), point.place.line},
            {QStringLiteral("enabled"), point.enabled},
            {QStringLiteral("condition"), point.condition},
            {QStringLiteral("hits"), point.hits},
            {QStringLiteral("hitRule"), int(point.hitRule)},
            {QStringLiteral("log"), point.logText}};
}

RpaBreakpoint FromObject(const QJsonObject& object)
{
    RpaBreakpoint point;
    point.place.processName = object.value(QStringLiteral("process")).toString();
    point.place.statementId = object.value(QStringLiteral("statement")).toString();
    point.place.line = object.value(QStringLiteral("line")).toInt();
    point.enabled = object.value(QStringLiteral("enabled")).toBool(true);
    point.condition = object.value(QStringLiteral("condition")).toString();
    point.hits = std::max(0, object.value(QStringLiteral("hits")).toInt());
    const int rule = object.value(QStringLiteral("hitRule")).toInt();
    point.hitRule = RpaHitRule(qBound(int(RpaHitRule::FromThenOn), rule, int(RpaHitRule::Every)));
    point.logText = object.value(QStringLiteral("log")).toString();
    return point;
}

void WriteToDisk(const QString& path, const QByteArray& json)
{
    QDir().mkpath(QFileInfo(path).path());
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly) && file.write(json) == json.size())
        file.commit();
}
} // namespace

std::optional<QVector<RpaBreakpoint>> BreakpointFile::Read(const QString& appId)
{
    if (appId.isEmpty())
        return std::nullopt;
    const auto known = KnownBreakpoints().constFind(appId);
    if (known != KnownBreakpoints().constEnd())
        return *known;
    QFile file(BreakpointPath(appId));
    if (!file.open(QIODevice::ReadOnly) || file.size() > breakpointBytesAtMost)
        return std::nullopt;
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll());
    if (!document.isArray())
        return std::nullopt;
    QVector<RpaBreakpoint> points;
    const QJsonArray array = document.array();
    for (const QJsonValue& each : array) {
        const RpaBreakpoint point = FromObject(each.toObject());
        if (!point.place.statementId.isEmpty() || point.place.line > 0)
            points.append(point);
    }
    KnownBreakpoints().insert(appId, points);
    return points;
}

void BreakpointFile::Write(const QString& appId, const QVector<RpaBreakpoint>& points)
{
    if (appId.isEmpty())
        return;
    KnownBreakpoints().insert(appId, points);
    QJsonArray array;
    for (const RpaBreakpoint& point : points)
        array.append(ToObject(point));
    const QByteArray json = QJsonDocument(array).toJson(QJsonDocument::Compact);
    BreakpointWriter().start([path = BreakpointPath(appId), json] { WriteToDisk(path, json); });
}

void BreakpointFile::Finish()
{
    BreakpointWriter().waitForDone();
}

void BreakpointFile::Forget()
{
    Finish();
    KnownBreakpoints().clear();
}
