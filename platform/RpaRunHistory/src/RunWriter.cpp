// SPDX-License-Identifier: Apache-2.0

#include "RpaRunHistory_p.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QImage>

namespace
{
// More is not held in memory for a disk that lags behind a flood of lines.
constexpr int mostUnderWay = 20000;
constexpr int widestPicture = 1280;
constexpr int mostPictureBytes = 2 * 1024 * 1024;

// Empty when there is none, or it is too large even when it is made smaller.
QByteArray PictureBytes(const QImage& picture)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    const QImage small = picture.width() > widestPicture
                             ? picture.scaledToWidth(widestPicture, Qt::SmoothTransformation)
                             : picture;
    if (small.isNull() || !small.save(&buffer, "PNG") || bytes.size() > mostPictureBytes)
        return QByteArray();
    return bytes;
}
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
    late = {};
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

void RpaRunHistory::Private::AddSpans(const RpaRunSpans& spans)
{
    const int count = spans.spans.size() + spans.sums.size();
    if (spansUnderWay + count > mostUnderWay) {
        for (const RpaRunSpan& span : spans.spans)
            late.Add(span);
        for (const RpaRunSpanSum& sum : spans.sums)
            late.Add(sum);
        return;
    }
    QueueSpans(spans);
}

void RpaRunHistory::Private::QueueSpans(RpaRunSpans due)
{
    const int count = due.spans.size() + due.sums.size();
    spansUnderWay += count;
    due.sums += std::exchange(late, SpanSums()).Get();
    Do([this, due, count](RunDatabase* store, QString* problem) {
        if (running != 0)
            store->GetSpans()->Add(running, due, problem);
        OnGui([this, count] { spansUnderWay -= count; });
    });
}

void RpaRunHistory::Private::SetFailure(const RpaRunFailure& failure)
{
    const QImage shown = picture ? picture() : QImage();
    if (failure.IsEmpty() && shown.isNull())
        return;
    Do([this, failure, shown](RunDatabase* store, QString* problem) {
        if (running != 0)
            store->GetSpans()->SetFailure(running, failure, PictureBytes(shown), problem);
    });
}

void RpaRunHistory::Private::End(const RpaRunRecord& record)
{
    if (!late.IsEmpty())
        QueueSpans({});
    Do([this, record, missing = dropped](RunDatabase* store, QString* problem) {
        RpaRunRecord ended = record;
        ended.id = std::exchange(running, 0);
        ended.missingLines += missing;
        if (ended.id != 0)
            store->End(ended, problem);
        Tell(record.appId);
    });
}
