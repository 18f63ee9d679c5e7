// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "DraftWriter_p.h"

#include <RpaAppData/RpaAppData.h>
#include <RpaAppData/RpaAppExtendInfo.h>
#include <RpaDrafts/RpaDraftJournal.h>
#include <WbSystem/FileLock.h>

#include <QHash>
#include <QTimer>
#include <QVector>

// What the journal knows of an app data that is alive.
struct DraftTrack
{
    quint64 id = 0;         // addresses are used again
    QString draftName;      // of its draft on the disk; empty: none
    QByteArray sentSha256;  // of the content that the last save sent
    QByteArrayList inDoubt; // what saves sent that were not confirmed
    bool isDue = false;     // there are edits that were not written yet
    bool isUnsaved = false;
    bool isSending = false; // a save went out and was not confirmed
};

struct SaveConfirmation
{
    QString appId;
    QString versionId;
    int revision = 0;
    QByteArray sha256;
};
class RpaDraftJournal::Private : public QObject
{
public:
    explicit Private(RpaDraftJournal* journal);

    void Edited(RpaAppData* app);
    void Saving(RpaAppData* app);
    void TakenBack(RpaAppData* app);
    void GiveUp(RpaAppData* app);
    void Going(RpaAppData* app);
    void WriteDue();
    void Write(RpaAppData* app, bool isSent);
    void Done(const DraftJob& job, const QString& problem);
    void Fail(const QString& problem);
    void Idle();
    void Apply(const SaveConfirmation& confirmation);
    void Forget(const QString& name);
    DraftTrack& TrackOf(RpaAppData* app);
    DraftTrack* FindTrack(quint64 id);
    bool IsWatched(const RpaAppData* app) const
    {
        return writer && !appId.isEmpty() && app->GetAppExtendInfo()->GetAppId() == appId;
    }

    RpaDraftJournal* const q;
    std::unique_ptr<FileLock> lock;
    std::unique_ptr<DraftWriter> writer; // null: nothing is kept
    std::function<int(const QString&)> baseQuery;
    std::chrono::milliseconds delay = std::chrono::milliseconds(500);
    QTimer timer;
    QString account;
    QString appId; // empty: no app is open
    QHash<RpaAppData*, DraftTrack> tracks;
    quint64 lastTrackId = 0;
    RpaAppData* lastEdited = nullptr;
    QHash<QString, RpaDraft> onDisk; // drafts of this session by name, without content
    QVector<SaveConfirmation> confirmations;
    bool isOverdue = false;        // the disk was busy when it was time to write
    bool hasFailed = false;        // since the last draft that was written; told once
    bool isTooLarge = false;       // likewise
    bool isWaitingForDisk = false; // the timer runs towards another try
};
