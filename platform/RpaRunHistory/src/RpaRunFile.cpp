// SPDX-License-Identifier: Apache-2.0

#include "RunRows_p.h"
#include "SpanBlock_p.h"

#include <RpaRunHistory/RpaRunFile.h>

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>
#include <QtEndian>

namespace
{
const QString fileFormat = QStringLiteral("rpa-run");
constexpr int fileVersion = 1;
constexpr int linesOfAFile = 20000;
constexpr int spansOfAFile = 200000;
constexpr int longestText = 64 * 1024;

QString Text(const QJsonObject& object, const char* name)
{
    return object.value(QLatin1String(name)).toString().left(longestText);
}

QString Packed(const QByteArray& bytes)
{
    return QString::fromLatin1(qCompress(bytes).toBase64());
}

// Empty for what is none, or would be larger than a file may be.
QByteArray Unpacked(const QJsonValue& value)
{
    const QByteArray bytes = QByteArray::fromBase64(value.toString().toLatin1());
    if (bytes.size() < 4 || qFromBigEndian<quint32>(bytes.constData()) > quint32(RpaRunFile::bytesAtMost))
        return QByteArray();
    return qUncompress(bytes);
}

QJsonObject ToJson(const RpaRunRecord& run)
{
    return {{QStringLiteral("app"), run.appId},
            {QStringLiteral("appName"), run.appName},
            {QStringLiteral("version"), run.versionId},
            {QStringLiteral("versionName"), run.versionName},
            {QStringLiteral("revision"), run.revision},
            {QStringLiteral("account"), run.account},
            {QStringLiteral("origin"), int(run.origin)},
            {QStringLiteral("process"), run.processName},
            {QStringLiteral("parameters"), RunRows::ToJson(run.parameters)},
            {QStringLiteral("packages"), QJsonArray::fromStringList(run.packages)},
            {QStringLiteral("started"), double(run.started.toMSecsSinceEpoch())},
            {QStringLiteral("duration"), double(run.duration)},
            {QStringLiteral("result"), int(run.result)},
            {QStringLiteral("reason"), run.reason},
            {QStringLiteral("trace"), run.trace},
            {QStringLiteral("failedProcess"), run.failedProcess},
            {QStringLiteral("failedStatement"), run.failedStatement},
            {QStringLiteral("failedLine"), run.failedLine},
            {QStringLiteral("missingLines"), double(run.missingLines)}};
}

RpaRunRecord RecordOf(const QJsonObject& json)
{
    RpaRunRecord run;
    run.appId = Text(json, "app");
    run.appName = Text(json, "appName");
    run.versionId = Text(json, "version");
    run.versionName = Text(json, "versionName");
    run.revision = qMax(0, json.value(QStringLiteral("revision")).toInt());
    run.account = Text(json, "account");
    run.origin = RunRows::EnumOf(json.value(QStringLiteral("origin")).toInt(), RpaRunOrigin::Page);
    run.processName = Text(json, "process");
    run.parameters = RunRows::ValuesOf(Text(json, "parameters").toUtf8());
    for (const QJsonValue package : json.value(QStringLiteral("packages")).toArray())
        run.packages.append(package.toString().left(longestText));
    run.started =
        QDateTime::fromMSecsSinceEpoch(qint64(json.value(QStringLiteral("started")).toDouble()), Qt::UTC);
    run.duration = qMax<qint64>(0, qint64(json.value(QStringLiteral("duration")).toDouble()));
    run.result = RunRows::EnumOf(json.value(QStringLiteral("result")).toInt(), RpaRunResult::Lost);
    run.reason = Text(json, "reason");
    run.trace = Text(json, "trace");
    run.failedProcess = Text(json, "failedProcess");
    run.failedStatement = Text(json, "failedStatement");
    run.failedLine = qMax(0, json.value(QStringLiteral("failedLine")).toInt());
    run.missingLines = qMax<qint64>(0, qint64(json.value(QStringLiteral("missingLines")).toDouble()));
    return run;
}

QJsonArray ToJson(const QVector<RpaLogLine>& lines)
{
    QJsonArray array;
    for (const RpaLogLine& line : lines)
        array.append(QJsonArray{double(line.number), double(line.time.toMSecsSinceEpoch()), int(line.level),
                                line.text, line.statementId, line.line});
    return array;
}

QVector<RpaLogLine> LinesOf(const QJsonArray& array)
{
    QVector<RpaLogLine> lines;
    for (const QJsonValue entry : array) {
        if (lines.size() == linesOfAFile)
            break;
        RpaLogLine line;
        line.number = qint64(entry[0].toDouble());
        line.time = QDateTime::fromMSecsSinceEpoch(qint64(entry[1].toDouble()));
        line.level = RunRows::EnumOf(entry[2].toInt(), RpaLogLevel::Error);
        line.text = entry[3].toString().left(longestText);
        line.statementId = entry[4].toString().left(longestText);
        line.line = entry[5].toInt();
        lines.append(line);
    }
    return lines;
}

bool ReadDocument(const QString& path, QJsonObject* document, QString* problem)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        *problem = QStringLiteral("无法读取文件：%1").arg(file.errorString());
        return false;
    }
    const bool fits = file.size() <= RpaRunFile::bytesAtMost;
    *document = fits ? QJsonDocument::fromJson(file.read(RpaRunFile::bytesAtMost)).object() : QJsonObject();
    if (document->value(QStringLiteral("format")).toString() != fileFormat) {
        *problem = QStringLiteral("这个文件不是运行记录");
        return false;
    }
    if (document->value(QStringLiteral("formatVersion")).toInt() > fileVersion) {
        *problem = QStringLiteral("这个文件来自更新的工作站，请先升级");
        return false;
    }
    return true;
}
} // namespace

bool RpaRunFile::Write(const QString& path, QString* problem) const
{
    const QJsonObject document{
        {QStringLiteral("format"), fileFormat},
        {QStringLiteral("formatVersion"), fileVersion},
        {QStringLiteral("run"), ToJson(record)},
        {QStringLiteral("log"), ToJson(log)},
        {QStringLiteral("spans"), Packed(SpanBlock::Pack(details.spans.spans))},
        {QStringLiteral("sums"), Packed(SpanBlock::PackSums(details.spans.sums))},
        {QStringLiteral("failure"), Packed(SpanBlock::PackFailure(details.failure))},
        {QStringLiteral("picture"), QString::fromLatin1(details.picture.toBase64())},
    };
    QSaveFile file(path);
    const QByteArray bytes = QJsonDocument(document).toJson(QJsonDocument::Indented);
    if (file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit())
        return true;
    *problem = QStringLiteral("无法写入文件：%1").arg(file.errorString());
    return false;
}

bool RpaRunFile::Read(const QString& path, QString* problem)
{
    QJsonObject document;
    if (!ReadDocument(path, &document, problem))
        return false;
    record = RecordOf(document.value(QStringLiteral("run")).toObject());
    log = LinesOf(document.value(QStringLiteral("log")).toArray());
    details.spans.spans =
        SpanBlock::Unpack(Unpacked(document.value(QStringLiteral("spans")))).mid(0, spansOfAFile);
    details.spans.sums = SpanBlock::UnpackSums(Unpacked(document.value(QStringLiteral("sums"))));
    details.failure = SpanBlock::UnpackFailure(Unpacked(document.value(QStringLiteral("failure"))));
    details.picture = QByteArray::fromBase64(document.value(QStringLiteral("picture")).toString().toLatin1());
    return true;
}
