// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaDrafts/RpaDraft.h>
#include <RpaDrafts/RpaDraftsExport.h>

#include <QObject>
#include <QStringList>
#include <QVector>

#include <chrono>
#include <functional>
#include <memory>

class RpaAppData;

// Keeps unsaved work on the disk, so that it outlives a crash. While an app is open, every edit of its app
// data reaches a draft file within a second; edits in between are written together. The draft goes when the
// server has confirmed exactly its content, or when the author gave the work up (RpaAppDataNotify::SigGivenUp,
// GiveUp()), and never otherwise.
//
//     journal.Start(folder, &problem);
//     journal.Open(account, appId);    // before the editor loads the app
//     …                                // Confirm() for each confirmed save
//     journal.Close();                 // after the editor went
//
// Hashing and the disk are on a thread of its own; the GUI thread only writes the app data as JSON (about
// 2 ms per MB). A disk that refuses disturbs nobody: SigFailed once, the rest goes to the log, and the next
// edits try again. Content that could not be read back is not written. GUI thread only.
class RPADRAFTS_EXPORT RpaDraftJournal : public QObject
{
    Q_OBJECT

public:
    // drafts: newest first. refusals: per file that could not be believed, why, in the user's words; those
    // files were renamed and stay in the folder.
    using Found = std::function<void(const QVector<RpaDraft>& drafts, const QStringList& refusals)>;

    // Keeps nothing until Start().
    explicit RpaDraftJournal(QObject* parent = nullptr);
    // Writes what is due first.
    ~RpaDraftJournal() override;

    // Takes the folder over; until this process ends no other one gets it. False with a problem in the user's
    // words when it cannot be had: the journal then keeps nothing.
    bool Start(const QString& folder, QString* problem);

    // From the first edit to the disk, and between two writes. Default: 500 ms, at most 1 s.
    void SetDelay(std::chrono::milliseconds delay);

    // The revision that a save of the version would be based on now: written into drafts of app data that
    // does not know its own (RpaAppData::GetOrigin).
    void SetBaseQuery(const std::function<int(const QString& versionId)>& query);

    // Whether there may be drafts of the app: a look at file names.
    bool HasDrafts(const QString& account, const QString& appId) const;
    // Reads and checks them; answers once, from the event loop, unless the context is gone then.
    void Read(const QString& account, const QString& appId, QObject* context, const Found& found);
    // The author does not want it any more, or the server has its content.
    void Remove(const RpaDraft& draft);

    // Its content turned out to be none that can be opened: renamed, so that it is not offered again, and
    // kept.
    void SetAside(const RpaDraft& draft);

    // From now on edits of this app are kept.
    void Open(const QString& account, const QString& appId);
    // Work that is not written yet is written.
    void Close();
    // What was edited last; null when it is gone.
    const RpaAppData* GetLastEdited() const;
    // The author gives that up without the app data being told; later edits are kept again.
    void GiveUp();
    // The server has this content durably as this revision of the version.
    void Confirm(const QString& appId, const QString& versionId, int revision, const QByteArray& sha256);

    // Waits until everything is on the disk.
    void Finish();

signals:
    // The disk refuses: the first time, and again only after it took a draft in between.
    void SigFailed(const QString& problem);
    // The app has become larger than can be kept: what of it, in the user's words. The last draft that fitted
    // stays. Told again only after the app fitted in between.
    void SigTooLarge(const QString& what);
    // A draft is on the disk; a draft is gone from it.
    void SigWritten(const QString& name);
    void SigRemoved(const QString& name);

private:
    class Private;
    const std::unique_ptr<Private> d;
};
