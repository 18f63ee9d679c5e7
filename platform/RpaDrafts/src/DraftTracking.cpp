// SPDX-License-Identifier: Apache-2.0

// From an edit to the writer, and from a confirmed save to a removed draft.
#include "DraftFile_p.h"
#include "RpaDraftJournal_p.h"

#include <RpaAppData/RpaAppDataNotify.h>

#include <QLoggingCategory>

#include <algorithm>
#include <utility>

Q_LOGGING_CATEGORY(draftLog, "rpa.drafts", QtInfoMsg)

namespace
{
constexpr auto afterFailure = std::chrono::seconds(10);
} // namespace

RpaDraftJournal::Private::Private(RpaDraftJournal* journal) : q(journal)
{
    timer.setSingleShot(true);
    connect(&timer, &QTimer::timeout, this, &Private::WriteDue);
    const RpaAppDataNotify* notify = RpaAppDataNotify::Instance();
    connect(notify, &RpaAppDataNotify::SigEdited, this, &Private::Edited);
    connect(notify, &RpaAppDataNotify::SigSaving, this, &Private::Saving);
    connect(notify, &RpaAppDataNotify::SigGivenUp, this, &Private::GiveUp);
    connect(notify, &RpaAppDataNotify::SigTakenBack, this, &Private::TakenBack);
    connect(notify, &RpaAppDataNotify::SigGoing, this, &Private::Going);
    // An app data that was never edited may be saved into another version.
    connect(notify, &RpaAppDataNotify::SigReplaced, this, [this](RpaAppData* app) {
        if (!appId.isEmpty())
            TrackOf(app).inDoubt.clear(); // of the content before
    });
}

DraftTrack& RpaDraftJournal::Private::TrackOf(RpaAppData* app)
{
    DraftTrack& track = tracks[app];
    if (track.id == 0)
        track.id = ++lastTrackId;
    return track;
}

DraftTrack* RpaDraftJournal::Private::FindTrack(quint64 id)
{
    for (DraftTrack& track : tracks)
        if (track.id == id)
            return &track;
    return nullptr;
}

void RpaDraftJournal::Private::Edited(RpaAppData* app)
{
    if (!IsWatched(app))
        return;
    DraftTrack& track = TrackOf(app);
    RpaContentOrigin origin = app->GetOrigin();
    if (!origin.draftName.isEmpty()) {
        // Restored work goes on in the draft that it came from.
        track.draftName = std::exchange(origin.draftName, QString());
        track.inDoubt = std::exchange(origin.inDoubt, {});
        app->SetOrigin(origin);
    }
    track.isDue = true;
    track.isUnsaved = true;
    lastEdited = app;
    // Not started anew by each edit: whoever types without a pause is kept safe, too.
    if (!timer.isActive() || isWaitingForDisk)
        timer.start(delay);
    isWaitingForDisk = false;
}

void RpaDraftJournal::Private::Saving(RpaAppData* app)
{
    if (!IsWatched(app) || !tracks.value(app).isUnsaved)
        return;
    // Later, but before anything else happens: a save marks the content with its format version before it
    // sends it, and the draft must be what is sent for the server's confirmation to fit.
    TrackOf(app).isSending = true;
    const quint64 id = tracks.value(app).id;
    QMetaObject::invokeMethod(
        this,
        [this, app, id] {
            const DraftTrack track = tracks.value(app);
            if (track.id == id && track.isUnsaved)
                Write(app, !app->GetModified());
        },
        Qt::QueuedConnection);
}

// Nothing is unsaved any more; a draft would be offered for nothing. That of a save under way stays: the
// server may not have it.
void RpaDraftJournal::Private::TakenBack(RpaAppData* app)
{
    const DraftTrack track = tracks.value(app);
    if (track.isSending || !track.inDoubt.isEmpty())
        Saving(app);
    else
        GiveUp(app);
}

void RpaDraftJournal::Private::GiveUp(RpaAppData* app)
{
    const auto track = tracks.find(app);
    if (!IsWatched(app) || track == tracks.end())
        return;
    track->isDue = false;
    track->isUnsaved = false;
    writer->Drop(track->id);
    Forget(std::exchange(track->draftName, QString()));
}

void RpaDraftJournal::Private::Going(RpaAppData* app)
{
    if (tracks.value(app).isDue)
        Write(app, false);
    tracks.remove(app);
    if (lastEdited == app)
        lastEdited = nullptr;
}

void RpaDraftJournal::Private::WriteDue()
{
    isOverdue = writer && !writer->IsIdle();
    if (isOverdue)
        return;
    const QList<RpaAppData*> apps = tracks.keys();
    for (RpaAppData* app : apps)
        if (tracks.value(app).isDue)
            Write(app, false);
}

void RpaDraftJournal::Private::Write(RpaAppData* app, bool isSent)
{
    if (!IsWatched(app))
        return;
    DraftTrack& track = TrackOf(app);
    track.isDue = false;
    const RpaContentOrigin origin = app->GetOrigin();
    const bool isKnown = origin.baseRevision > 0 || !baseQuery;
    DraftJob job;
    job.trackId = track.id;
    job.isSent = isSent;
    job.draft.name = track.draftName;
    job.draft.account = account;
    job.draft.appId = appId;
    job.draft.versionId = origin.versionId;
    job.draft.baseRevision = isKnown ? origin.baseRevision : baseQuery(origin.versionId);
    job.draft.inDoubt = track.inDoubt;
    job.draft.content = app->ToJson();
    writer->Write(job);
}

void RpaDraftJournal::Private::Done(const DraftJob& job, const QString& problem)
{
    DraftTrack* const track = FindTrack(job.trackId);
    if (track)
        track->inDoubt = job.draft.inDoubt;
    if (job.isTooLarge) {
        // Only another edit can mend that.
        qCWarning(draftLog, "not kept: %s", qUtf8Printable(problem));
        if (!std::exchange(isTooLarge, true))
            emit q->SigTooLarge(problem);
        return;
    }
    if (!problem.isEmpty()) {
        Fail(problem);
        if (track) {
            track->isDue = true;
            isWaitingForDisk = !timer.isActive();
            if (isWaitingForDisk)
                timer.start(afterFailure);
        }
        return;
    }
    hasFailed = false;
    isTooLarge = false;
    if (track) {
        onDisk.remove(track->draftName); // an earlier name of it
        track->draftName = job.draft.name;
        if (job.isSent)
            track->sentSha256 = job.draft.sha256;
    }
    onDisk.insert(job.draft.name, job.draft);
    emit q->SigWritten(job.draft.name);
}

void RpaDraftJournal::Private::Fail(const QString& problem)
{
    qCWarning(draftLog, "%s", qUtf8Printable(problem));
    if (!std::exchange(hasFailed, true))
        emit q->SigFailed(problem);
}

void RpaDraftJournal::Private::Idle()
{
    const QVector<SaveConfirmation> due = std::exchange(confirmations, {});
    for (const SaveConfirmation& confirmation : due)
        Apply(confirmation);
    if (isOverdue)
        WriteDue();
}

void RpaDraftJournal::Private::Apply(const SaveConfirmation& confirmation)
{
    for (auto entry = tracks.begin(); entry != tracks.end(); ++entry) {
        RpaAppData* const app = entry.key();
        if (!IsWatched(app) || confirmation.appId != appId)
            continue;
        const bool isSame = app->GetOrigin().versionId == confirmation.versionId;
        if (!isSame && entry->sentSha256 != confirmation.sha256 &&
            (app->GetModified() || DraftFile::Sha256Of(app->ToJson()) != confirmation.sha256))
            continue;
        // A save into a new or another version: that is what is being edited from now on. The disk may have
        // been busy meanwhile: what was saved or loaded since is not forgotten.
        const int base =
            isSame ? std::max(app->GetOrigin().baseRevision, confirmation.revision) : confirmation.revision;
        app->SetOrigin({confirmation.versionId, base, QString()});
        // What was sent before that is not what the version holds any more.
        entry->inDoubt = entry->inDoubt.mid(entry->inDoubt.lastIndexOf(confirmation.sha256) + 1);
        entry->isSending = entry->isSending && entry->sentSha256 != confirmation.sha256;
        if (onDisk.value(entry->draftName).sha256 == confirmation.sha256) {
            Forget(std::exchange(entry->draftName, QString()));
            entry->isUnsaved = app->GetModified();
        }
    }
    const QList<RpaDraft> others = onDisk.values();
    for (const RpaDraft& draft : others)
        if (draft.appId == confirmation.appId && draft.versionId == confirmation.versionId &&
            draft.sha256 == confirmation.sha256)
            Forget(draft.name);
}

void RpaDraftJournal::Private::Forget(const QString& name)
{
    onDisk.remove(name);
    writer->Remove(name);
}
