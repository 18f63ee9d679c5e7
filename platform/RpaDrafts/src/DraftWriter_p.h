// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "DraftFolder_p.h"

#include <RpaDrafts/RpaDraftJournal.h>

#include <QObject>
#include <QThreadPool>
#include <QVector>

#include <functional>

// One writing of an app data.
struct DraftJob
{
    quint64 trackId = 0; // which app data it is of
    RpaDraft draft;
    bool isSent = false;     // the content that a save is sending
    bool isTooLarge = false; // not written: the problem says what of it
    QByteArrayList passed;   // contents that saves sent meanwhile, whose own jobs this one took the place of
};

// Does the journal's work on the disk, one thing after another on a thread of its own, and answers on the GUI
// thread. One write is under way at a time, and at most one per app data waits for it.
class DraftWriter : public QObject
{
    Q_OBJECT

public:
    explicit DraftWriter(const QString& folder);
    ~DraftWriter() override;

    const DraftFolder& GetFolder() const { return folder; }

    bool IsIdle() const { return !isWriting; }
    // Takes the place of one of the same app data that waits.
    void Write(const DraftJob& job);
    // What waits is not written; what is under way is removed when it is done.
    void Drop(quint64 trackId);
    void Remove(const QString& name);
    void SetAside(const QString& name);
    void Read(const QString& account, const QString& appId, QObject* context,
              const RpaDraftJournal::Found& found);
    void Finish();

signals:
    // The job with its draft's name and digests; problem is empty when it is on the disk. The next one is
    // under way only afterwards.
    void SigDone(const DraftJob& job, const QString& problem);
    void SigRemoved(const QString& name);
    void SigFailed(const QString& problem);
    // Nothing is under way or waits.
    void SigIdle();

private:
    void Start(DraftJob job);
    void Done(const DraftJob& job, const QString& problem);
    void RunOnGui(const std::function<void()>& act);

    const DraftFolder folder;
    QThreadPool thread;
    bool isWriting = false;
    quint64 writing = 0;
    bool isDropped = false;
    QVector<DraftJob> waiting;
};
