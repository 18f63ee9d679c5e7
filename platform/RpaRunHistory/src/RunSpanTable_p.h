// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "RunLimits_p.h"
#include "SpanSums_p.h"

#include <RpaRunHistory/RpaRunDetails.h>

#include <QString>
#include <QStringList>

class RunSql;

// What runs did outside, in blocks of some spans each: the oldest blocks of a run are added up when there are
// too many. One run at a time is written to.
class RunSpanTable
{
public:
    // sql is not owned and lives longer.
    RunSpanTable(RunSql* statements, const RunLimits& runLimits) : sql(statements), limits(runLimits) {}

    static QStringList Schema();

    bool Add(qint64 run, const RpaRunSpans& news, QString* problem);
    // How it stood when it failed; the picture may be empty.
    bool SetFailure(qint64 run, const RpaRunFailure& failure, const QByteArray& picture, QString* problem);
    RpaRunDetails Read(qint64 run, QString* problem);

private:
    bool Write(const RpaRunSpans& news, QString* problem);
    bool WriteTail(QString* problem);
    bool FoldOldest(QString* problem);

    RunSql* const sql;
    const RunLimits limits;
    qint64 current = 0;       // the run that the following is of
    int number = 0;           // of the block that is being filled
    QVector<RpaRunSpan> tail; // its spans
    int first = 0;            // the oldest block that is kept
    SpanSums sums;
};
