// SPDX-License-Identifier: Apache-2.0

#include "RpaRunHistory_p.h"

#include <QCoreApplication>

namespace
{
// More is not held in memory for a disk that lags behind a flood of lines.
constexpr int mostUnderWay = 20000;
} // namespace

RpaRunHistory::Private::Private(RpaRunHistory* owner)
    : history(owner), database(std::make_unique<RunDatabase>())
{
    thread.setMaxThreadCount(1);
    thread.setExpiryTimeout(-1); // a connection belongs to the thread that made it
}

RpaRunHistory::Private::~Private()
{
    thread.start([this] { database.reset(); });
    thread.waitForDone();
}

void RpaRunHistory::Private::Do(const Task& task)
{
    thread.start([this, task] {
        QString problem;
        task(database.get(), &problem);
        OnGui([this, problem] { NoteProblem(problem); });
    });
}

// Not when the history is gone: the destructor waits for the thread.
void RpaRunHistory::Private::OnGui(const std::function<void()>& act)
{
    QMetaObject::invokeMethod(history, act, Qt::QueuedConnection);
}

void RpaRunHistory::Private::Tell(const QString& appId)
{
    OnGui([this, appId] { emit history->SigChanged(appId); });
}

void RpaRunHistory::Private::NoteProblem(const QString& problem)
{
    const bool wasFailing = std::exchange(isFailing, !problem.isEmpty());
    if (isFailing && !wasFailing)
        emit history->SigFailed(problem);
}

void RpaRunHistory::Private::Finish()
{
    thread.waitForDone();
    QCoreApplication::sendPostedEvents(history, QEvent::MetaCall);
}

void RpaRunHistory::Private::Begin(const RpaRunRecord& record)
{
    dropped = 0;
    Do([this, record](RunDatabase* store, QString* problem) {
        RpaRunRecord begun = record;
        running = store->Begin(&begun, problem) ? begun.id : 0;
        Tell(record.appId);
    });
}

void RpaRunHistory::Private::AddLines(const QVector<RpaLogLine>& lines)
{
    if (underWay + lines.size() > mostUnderWay) {
        dropped += lines.size();
        return;
    }
    underWay += lines.size();
    Do([this, lines](RunDatabase* store, QString* problem) {
        if (running != 0)
            store->AddLines(running, lines, problem);
        OnGui([this, count = lines.size()] { underWay -= count; });
    });
}

void RpaRunHistory::Private::End(const RpaRunRecord& record)
{
    Do([this, record, missing = dropped](RunDatabase* store, QString* problem) {
        RpaRunRecord ended = record;
        ended.id = std::exchange(running, 0);
        ended.missingLines += missing;
        if (ended.id != 0)
            store->End(ended, problem);
        Tell(record.appId);
    });
}
