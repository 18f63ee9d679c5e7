// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaEngineCore/IRpaLogManager.h>
#include <RpaRunHistory/RpaRunDetails.h>
#include <RpaRunHistory/RpaRunFile.h>
#include <RpaRunHistory/RpaRunHistoryExport.h>
#include <RpaRunHistory/RpaRunRecord.h>

#include <QObject>
#include <QVector>

#include <functional>
#include <memory>

class IRpaDebugger;
class QImage;

// Keeps the runs of apps with their logs and what they did outside: the last 200 of each app, at most 10,000
// lines and 100,000 spans of each and 256 MB of all; the oldest go first. Values of passwords are written nowhere, and are struck out wherever a run wrote
// them into its log.
//
//     history.Start(folder, &problem);
//     history.Follow(engine->GetLogManager()->GetLogDataSource(), engine->GetEngineDebugger());
//
// The database is on a thread of its own; every operation returns at once and answers from the event loop. A
// disk that refuses disturbs no run: SigFailed once. GUI thread only.
class RPARUNHISTORY_EXPORT RpaRunHistory : public QObject
{
    Q_OBJECT

public:
    // What a run belongs to, beyond what the engine knows: of the record account, names, version, revision and
    // packages are taken.
    using Context = std::function<RpaRunRecord(const QString& appId)>;
    using Runs = std::function<void(const QVector<RpaRunRecord>& runs)>;
    // record.id is 0 when there is no such run any more.
    using Run = std::function<void(const RpaRunRecord& record, const QVector<RpaLogLine>& log)>;
    // Empty when there is no such run any more.
    using Details = std::function<void(const RpaRunDetails& details)>;
    using Exported = std::function<void(const QString& problem)>;
    using FileRead = std::function<void(const RpaRunFile& file, const QString& problem)>;
    // What the user sees of the browser; null when nothing.
    using Picture = std::function<QImage()>;

    // Keeps nothing until it is started.
    explicit RpaRunHistory(QObject* parent = nullptr);
    // Writes what is due first.
    ~RpaRunHistory() override;

    // Opens the history in that folder, or makes it; a file that is damaged is set aside. Runs that were under
    // way when the workstation ended are "lost" then. Problems come by SigFailed.
    void Start(const QString& folder);

    // Keeps every run of the engine from now on. Neither is owned; both live longer than this object.
    void Follow(IRpaLogDataSource* log, IRpaDebugger* debugger);
    void SetContext(const Context& context);
    // Asked when a run fails.
    void SetPicture(const Picture& picture);

    // Off: runs that begin from now on are not kept; what is there stays.
    void SetKeeping(bool keeps);

    // Newest first, without traces. Not answered when the context is gone.
    void List(const RpaRunFilter& filter, QObject* context, const Runs& answer);
    void Read(qint64 id, QObject* context, const Run& answer);
    // What it did outside, and how it stood when it failed.
    void ReadDetails(qint64 id, QObject* context, const Details& answer);
    // The run as a file that RpaRunFile reads; problem is empty when it went well.
    void Export(qint64 id, const QString& path, QObject* context, const Exported& answer);
    // Reads such a file; the run is not kept. problem is empty when it went well.
    void ReadFile(const QString& path, QObject* context, const FileRead& answer);
    void Remove(qint64 id);
    // Every run of the app.
    void RemoveAll(const QString& appId);

    // Waits until everything is on the disk.
    void Finish();

signals:
    // A run of the app began, ended or was removed.
    void SigChanged(const QString& appId);
    // The disk refuses: the first time, and again only after it took something in between.
    void SigFailed(const QString& problem);

private:
    class Private;
    const std::unique_ptr<Private> d;
};
