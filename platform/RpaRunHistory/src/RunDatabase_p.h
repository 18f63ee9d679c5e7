// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "RunSpanTable_p.h"
#include "RunSql_p.h"

#include <RpaEngineCore/IRpaLogManager.h>
#include <RpaRunHistory/RpaRunRecord.h>

#include <QString>
#include <QVector>

// The runs on the disk. Belongs to the thread that opens it. What fails says why in the user's words.
class RunDatabase : private RunSql
{
public:
    explicit RunDatabase(const RunLimits& runLimits = RunLimits()) : limits(runLimits) {}
    ~RunDatabase();

    // What follows fails without a word when this failed.
    bool Open(const QString& folder, QString* problem);

    // Gives the record its id.
    bool Begin(RpaRunRecord* record, QString* problem);
    bool AddLines(qint64 id, const QVector<RpaLogLine>& lines, QString* problem);
    // Writes how it ended, then lets the oldest go that are too many.
    bool End(const RpaRunRecord& record, QString* problem);

    QVector<RpaRunRecord> List(const RpaRunFilter& filter, QString* problem);
    RpaRunRecord Read(qint64 id, QString* problem);
    QVector<RpaLogLine> ReadLog(qint64 id, QString* problem);
    // What the run did outside, and how it stood when it failed.
    RunSpanTable* GetSpans() { return &spans; }
    bool Remove(qint64 id, QString* problem);
    bool RemoveAll(const QString& appId, QString* problem);

private:
    bool OpenFile(const QString& path, QString* problem);
    bool Prepare(QString* problem);
    bool WriteLines(qint64 id, const QVector<RpaLogLine>& lines, QString* problem);
    bool TrimLog(qint64 id, QString* problem);
    bool Prune(const QString& appId, QString* problem);
    qint64 BytesUsed();

    const RunLimits limits;
    QString connection;
    RunSpanTable spans{this, limits};
};
