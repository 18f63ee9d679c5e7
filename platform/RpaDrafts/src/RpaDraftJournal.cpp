// SPDX-License-Identifier: Apache-2.0

#include "RpaDraftJournal_p.h"

#include <WbSystem/DurableFile.h>

#include <QPointer>

#include <algorithm>
#include <utility>

RpaDraftJournal::RpaDraftJournal(QObject* parent) : QObject(parent), d(std::make_unique<Private>(this)) {}

RpaDraftJournal::~RpaDraftJournal()
{
    Close();
    Finish();
}

bool RpaDraftJournal::Start(const QString& folder, QString* problem)
{
    if (!DurableFile::CreateFolder(folder, problem))
        return false;
    auto lock = std::make_unique<FileLock>(folder + QStringLiteral("/lock"));
    const FileLock::Result result = lock->TryLock();
    if (result != FileLock::Result::Locked) {
        *problem = result == FileLock::Result::Taken
                       ? QStringLiteral("草稿文件夹“%1”正由另一个工作站使用").arg(folder)
                       : QStringLiteral("无法使用草稿文件夹“%1”").arg(folder);
        return false;
    }
    d->lock = std::move(lock);
    d->writer = std::make_unique<DraftWriter>(folder);
    connect(d->writer.get(), &DraftWriter::SigDone, d.get(), &Private::Done);
    connect(d->writer.get(), &DraftWriter::SigFailed, d.get(), &Private::Fail);
    connect(d->writer.get(), &DraftWriter::SigIdle, d.get(), &Private::Idle);
    connect(d->writer.get(), &DraftWriter::SigRemoved, this, &RpaDraftJournal::SigRemoved);
    return true;
}

void RpaDraftJournal::SetDelay(std::chrono::milliseconds delay)
{
    d->delay = std::min(delay, std::chrono::milliseconds(1000));
}

void RpaDraftJournal::SetBaseQuery(const std::function<int(const QString&)>& query)
{
    d->baseQuery = query;
}

bool RpaDraftJournal::HasDrafts(const QString& account, const QString& appId) const
{
    return d->writer && !d->writer->GetFolder().NamesOf(account, appId).isEmpty();
}

void RpaDraftJournal::Read(const QString& account, const QString& appId, QObject* context, const Found& found)
{
    if (d->writer) {
        d->writer->Read(account, appId, context, found);
        return;
    }
    const QPointer<QObject> guard(context);
    QMetaObject::invokeMethod(
        this,
        [guard, found] {
            if (guard)
                found({}, {});
        },
        Qt::QueuedConnection);
}

void RpaDraftJournal::Remove(const RpaDraft& draft)
{
    if (d->writer)
        d->Forget(draft.name);
}

void RpaDraftJournal::SetAside(const RpaDraft& draft)
{
    if (d->writer)
        d->writer->SetAside(draft.name);
}

void RpaDraftJournal::Open(const QString& account, const QString& appId)
{
    Close();
    d->account = account;
    d->appId = appId;
}

void RpaDraftJournal::Close()
{
    const QList<RpaAppData*> apps = d->tracks.keys();
    for (RpaAppData* app : apps)
        d->Going(app);
    d->timer.stop();
    d->appId.clear();
}

const RpaAppData* RpaDraftJournal::GetLastEdited() const
{
    return d->lastEdited;
}

void RpaDraftJournal::GiveUp()
{
    if (d->lastEdited)
        d->GiveUp(d->lastEdited);
}

void RpaDraftJournal::Confirm(const QString& appId, const QString& versionId, int revision,
                              const QByteArray& sha256)
{
    if (!d->writer)
        return;
    d->confirmations.append({appId, versionId, revision, sha256});
    if (d->writer->IsIdle())
        d->Idle();
}

void RpaDraftJournal::Finish()
{
    if (d->writer)
        d->writer->Finish();
}
