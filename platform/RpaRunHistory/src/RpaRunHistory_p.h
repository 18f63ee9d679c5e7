// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "RunDatabase_p.h"
#include "RunRecorder_p.h"

#include <RpaRunHistory/RpaRunHistory.h>

#include <QThreadPool>

#include <functional>

class RpaRunHistory::Private
{
public:
    using Task = std::function<void(RunDatabase* database, QString* problem)>;

    explicit Private(RpaRunHistory* history);
    ~Private();

    // On the database's thread, one after the other. What a task leaves in its problem is told.
    void Do(const Task& task);
    void OnGui(const std::function<void()>& act);
    void Tell(const QString& appId);
    void Finish();

    void Begin(const RpaRunRecord& record);
    void AddLines(const QVector<RpaLogLine>& lines);
    void AddSpans(const RpaRunSpans& spans);
    void SetFailure(const RpaRunFailure& failure);
    void End(const RpaRunRecord& record);

    RpaRunHistory::Picture picture;
    RunRecorder recorder;

private:
    void QueueSpans(RpaRunSpans due);
    void NoteProblem(const QString& problem);

    RpaRunHistory* const history;
    QThreadPool thread;
    bool isFailing = false;
    int underWay = 0;                      // lines that the disk has not taken yet
    qint64 dropped = 0;                    // of the present run, because it lags behind
    int spansUnderWay = 0;                 // as underWay
    SpanSums late;                         // of the present run, those that were too many for it
    std::unique_ptr<RunDatabase> database; // its thread's only
    qint64 running = 0;                    // id of the run under way; its thread's only
};
