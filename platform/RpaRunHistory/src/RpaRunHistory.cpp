// SPDX-License-Identifier: Apache-2.0

#include "RpaRunHistory_p.h"

#include <QPointer>

RpaRunHistory::RpaRunHistory(QObject* parent) : QObject(parent), d(std::make_unique<Private>(this))
{
    connect(&d->recorder, &RunRecorder::SigBegan, this, [this](const RpaRunRecord& run) { d->Begin(run); });
    connect(&d->recorder, &RunRecorder::SigLines, this,
            [this](const QVector<RpaLogLine>& lines) { d->AddLines(lines); });
    connect(&d->recorder, &RunRecorder::SigSpans, this,
            [this](const RpaRunSpans& spans) { d->AddSpans(spans); });
    connect(&d->recorder, &RunRecorder::SigFailure, this,
            [this](const RpaRunFailure& failure) { d->SetFailure(failure); });
    connect(&d->recorder, &RunRecorder::SigEnded, this, [this](const RpaRunRecord& run) { d->End(run); });
}

RpaRunHistory::~RpaRunHistory() = default;

void RpaRunHistory::Start(const QString& folder)
{
    d->Do([folder](RunDatabase* database, QString* problem) { database->Open(folder, problem); });
}

void RpaRunHistory::Follow(IRpaLogDataSource* log, IRpaDebugger* debugger)
{
    d->recorder.Follow(log, debugger);
}

void RpaRunHistory::SetContext(const Context& context)
{
    d->recorder.SetContext(context);
}

void RpaRunHistory::SetPicture(const Picture& picture)
{
    d->picture = picture;
}

void RpaRunHistory::SetKeeping(bool keeps)
{
    d->recorder.SetKeeping(keeps);
}

void RpaRunHistory::List(const RpaRunFilter& filter, QObject* context, const Runs& answer)
{
    const QPointer<QObject> guard(context);
    d->Do([this, filter, guard, answer](RunDatabase* database, QString* problem) {
        const QVector<RpaRunRecord> runs = database->List(filter, problem);
        d->OnGui([guard, answer, runs] {
            if (guard)
                answer(runs);
        });
    });
}

void RpaRunHistory::Read(qint64 id, QObject* context, const Run& answer)
{
    const QPointer<QObject> guard(context);
    d->Do([this, id, guard, answer](RunDatabase* database, QString* problem) {
        const RpaRunRecord record = database->Read(id, problem);
        const QVector<RpaLogLine> log = database->ReadLog(id, problem);
        d->OnGui([guard, answer, record, log] {
            if (guard)
                answer(record, log);
        });
    });
}

void RpaRunHistory::ReadDetails(qint64 id, QObject* context, const Details& answer)
{
    const QPointer<QObject> guard(context);
    d->Do([this, id, guard, answer](RunDatabase* database, QString* problem) {
        const RpaRunDetails details = database->GetSpans()->Read(id, problem);
        d->OnGui([guard, answer, details] {
            if (guard)
                answer(details);
        });
    });
}

void RpaRunHistory::Export(qint64 id, const QString& path, QObject* context, const Exported& answer)
{
    const QPointer<QObject> guard(context);
    d->Do([this, id, path, guard, answer](RunDatabase* database, QString* problem) {
        const RpaRunFile file{database->Read(id, problem), database->ReadLog(id, problem),
                              database->GetSpans()->Read(id, problem)};
        QString reason;
        if (file.record.id == 0)
            reason = QStringLiteral("这次运行的记录已不在");
        else
            file.Write(path, &reason);
        d->OnGui([guard, answer, reason] {
            if (guard)
                answer(reason);
        });
    });
}

void RpaRunHistory::ReadFile(const QString& path, QObject* context, const FileRead& answer)
{
    const QPointer<QObject> guard(context);
    d->Do([this, path, guard, answer](RunDatabase*, QString*) {
        RpaRunFile file;
        QString reason;
        file.Read(path, &reason);
        d->OnGui([guard, answer, file, reason] {
            if (guard)
                answer(file, reason);
        });
    });
}

void RpaRunHistory::Remove(qint64 id)
{
    d->Do([this, id](RunDatabase* database, QString* problem) {
        const QString appId = database->Read(id, problem).appId;
        if (database->Remove(id, problem))
            d->Tell(appId);
    });
}

void RpaRunHistory::RemoveAll(const QString& appId)
{
    d->Do([this, appId](RunDatabase* database, QString* problem) {
        if (database->RemoveAll(appId, problem))
            d->Tell(appId);
    });
}

void RpaRunHistory::Finish()
{
    d->Finish();
}
