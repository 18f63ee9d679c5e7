// SPDX-License-Identifier: Apache-2.0

#include "DraftFile_p.h"
#include "DraftWriter_p.h"

#include <RpaAppData/RpaContentExcess.h>

#include <QCoreApplication>
#include <QPointer>

#include <algorithm>

namespace
{
struct Findings
{
    QVector<RpaDraft> drafts;
    QStringList refusals;
};

Findings ReadAll(const DraftFolder& folder, const QString& account, const QString& appId)
{
    Findings findings;
    for (const QString& name : folder.NamesOf(account, appId)) {
        RpaDraft draft;
        QString problem;
        if (folder.Read(name, &draft, &problem))
            findings.drafts.append(draft);
        else
            findings.refusals.append(problem);
    }
    std::sort(findings.drafts.begin(), findings.drafts.end(),
              [](const RpaDraft& a, const RpaDraft& b) { return a.writtenAt > b.writtenAt; });
    return findings;
}
} // namespace

DraftWriter::DraftWriter(const QString& path) : folder(path)
{
    thread.setMaxThreadCount(1);
}

DraftWriter::~DraftWriter()
{
    Finish();
}

// Not when this object is gone: the destructor waits for the thread.
void DraftWriter::RunOnGui(const std::function<void()>& act)
{
    QMetaObject::invokeMethod(this, act, Qt::QueuedConnection);
}

void DraftWriter::Write(const DraftJob& job)
{
    if (!isWriting) {
        Start(job);
        return;
    }
    const auto same = std::find_if(waiting.begin(), waiting.end(),
                                   [&](const DraftJob& other) { return other.trackId == job.trackId; });
    if (same == waiting.end()) {
        waiting.append(job);
        return;
    }
    QByteArrayList passed = same->passed;
    if (same->isSent)
        passed.append(same->draft.content);
    *same = job;
    same->passed = passed;
}

void DraftWriter::Start(DraftJob job)
{
    isWriting = true;
    isDropped = false;
    writing = job.trackId;
    thread.start([this, job]() mutable {
        for (const QByteArray& content : qAsConst(job.passed))
            DraftFile::NoteUnsettled(&job.draft, DraftFile::Sha256Of(content));
        // What could not be read back must not take the place of what can.
        QString problem = RpaContentExcess::Find(job.draft.content);
        job.isTooLarge = !problem.isEmpty();
        job.draft.writtenAt = QDateTime::currentDateTimeUtc();
        if (!job.isTooLarge)
            folder.Write(&job.draft, &problem);
        if (job.isSent && !job.isTooLarge)
            DraftFile::NoteUnsettled(&job.draft, job.draft.sha256);
        job.draft.content.clear();
        job.passed.clear();
        RunOnGui([this, job, problem] { Done(job, problem); });
    });
}

void DraftWriter::Done(const DraftJob& job, const QString& problem)
{
    isWriting = false;
    if (isDropped)
        Remove(job.draft.name);
    else
        emit SigDone(job, problem);
    // Under the name that the draft has by now.
    for (DraftJob& other : waiting) {
        if (other.trackId != job.trackId || isDropped)
            continue;
        other.draft.inDoubt = job.draft.inDoubt;
        if (problem.isEmpty())
            other.draft.name = job.draft.name;
    }
    if (!waiting.isEmpty())
        Start(waiting.takeFirst());
    else if (!isWriting)
        emit SigIdle();
}

void DraftWriter::Drop(quint64 trackId)
{
    waiting.erase(std::remove_if(waiting.begin(), waiting.end(),
                                 [trackId](const DraftJob& job) { return job.trackId == trackId; }),
                  waiting.end());
    isDropped = isDropped || (isWriting && writing == trackId);
}

void DraftWriter::Remove(const QString& name)
{
    if (name.isEmpty())
        return;
    thread.start([this, name] {
        QString problem;
        const bool removed = folder.Remove(name, &problem);
        RunOnGui([this, name, removed, problem] {
            if (removed)
                emit SigRemoved(name);
            else
                emit SigFailed(problem);
        });
    });
}

void DraftWriter::SetAside(const QString& name)
{
    thread.start([this, name] {
        QString problem;
        if (folder.SetAside(name, &problem).isEmpty())
            RunOnGui([this, problem] { emit SigFailed(problem); });
    });
}

void DraftWriter::Read(const QString& account, const QString& appId, QObject* context,
                       const RpaDraftJournal::Found& found)
{
    const QPointer<QObject> guard(context);
    thread.start([this, account, appId, guard, found] {
        const Findings findings = ReadAll(folder, account, appId);
        RunOnGui([guard, found, findings] {
            if (guard)
                found(findings.drafts, findings.refusals);
        });
    });
}

void DraftWriter::Finish()
{
    // What is done may start the next write, or lead to a removal.
    do {
        thread.waitForDone();
        QCoreApplication::sendPostedEvents(this, QEvent::MetaCall);
    } while ((isWriting || !waiting.isEmpty()) && QCoreApplication::instance());
    thread.waitForDone();
    QCoreApplication::sendPostedEvents(this, QEvent::MetaCall);
}
