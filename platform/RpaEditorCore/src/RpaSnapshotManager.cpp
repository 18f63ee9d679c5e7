// SPDX-License-Identifier: Apache-2.0

#include <RpaAppData/RpaAppExtendInfo.h>
#include <RpaCore/RpaGlobalDataManager.h>
#include <RpaEditorCore/RpaSnapshotManager.h>
#include <WbCore/WbGlobalData.h>
#include <WbFoundation/FreeNames.h>

#include <QSet>

#include <algorithm>

int RpaSnapshotManager::GetCount() const
{
    return snapshots.size();
}

RpaAppSnapshotPtr RpaSnapshotManager::GetSnapshot(int index) const
{
    return snapshots.value(index);
}

RpaAppSnapshotPtr RpaSnapshotManager::GetSnapshot(const QString& id) const
{
    const auto position = indexById.constFind(id);
    return position == indexById.constEnd() ? vanished.value(id) : snapshots.at(*position);
}

QString RpaSnapshotManager::GetSnapshotId(int index) const
{
    const auto snapshot = GetSnapshot(index);
    return snapshot ? snapshot->GetId() : QString();
}

RpaAppSnapshotPtr RpaSnapshotManager::CreateDefault(const RpaAppDataPtr& appData) const
{
    if (!appData)
        return {};
    const QString apiVersion = RpaGlobalDataManager::Instance()->GetApiVersion();
    appData->SetVersion(apiVersion);

    auto snapshot = RpaAppSnapshotPtr::create();
    snapshot->SetName(FreeName());
    snapshot->SetDesc(QStringLiteral("默认开发版本"));
    snapshot->SetAppId(appData->GetAppExtendInfo()->GetAppId());
    snapshot->SetState(AppSnapshotDevelop);
    snapshot->SetAppData(QString::fromUtf8(appData->ToJson()));
    snapshot->SetApiVersion(apiVersion);
    snapshot->SetPin(WbGlobalData::Instance()->GetPin());
    snapshot->SetNamed(false);
    return snapshot;
}

QString RpaSnapshotManager::FreeName() const
{
    FreeNames names;
    for (const auto& snapshot : snapshots)
        names.Take(snapshot->GetName());
    return names.TakeNumbered(QStringLiteral("版本"));
}

void RpaSnapshotManager::SetSnapshots(const QVector<RpaAppSnapshotPtr>& list)
{
    for (const auto& snapshot : qAsConst(snapshots))
        vanished.insert(snapshot->GetId(), snapshot);

    snapshots.clear();
    QSet<QString> ids;
    for (const auto& snapshot : list) {
        if (!snapshot || snapshot->GetId().isEmpty() || ids.contains(snapshot->GetId()))
            continue;
        ids.insert(snapshot->GetId());
        snapshots.append(snapshot);
        Confirm(snapshot);
    }

    for (const QString& id : qAsConst(ids))
        vanished.remove(id);
    RebuildIndex();
}

void RpaSnapshotManager::AddOrReplace(const RpaAppSnapshotPtr& snapshot)
{
    if (!snapshot || snapshot->GetId().isEmpty())
        return;
    const int index = indexById.value(snapshot->GetId(), -1);
    if (index >= 0)
        snapshots[index] = snapshot;
    else
        snapshots.prepend(snapshot);
    vanished.remove(snapshot->GetId());
    Confirm(snapshot);
    RebuildIndex();
}

void RpaSnapshotManager::Remove(const QString& id)
{
    vanished.remove(id);
    const int index = indexById.value(id, -1);
    if (index < 0)
        return;
    snapshots.remove(index);
    RebuildIndex();
}

void RpaSnapshotManager::Clear()
{
    snapshots.clear();
    vanished.clear();
    RebuildIndex();
}

void RpaSnapshotManager::Forget()
{
    Clear();
    confirmed.clear();
    revisions.clear();
}

RpaAppSnapshotPtr RpaSnapshotManager::GetConfirmed(const QString& id) const
{
    const auto position = confirmed.constFind(id);
    return position == confirmed.constEnd() ? RpaAppSnapshotPtr() : RpaAppSnapshotPtr::create(*position);
}

void RpaSnapshotManager::Revert(const QString& id)
{
    const auto snapshot = GetSnapshot(id);
    const auto position = confirmed.constFind(id);
    if (snapshot && position != confirmed.constEnd())
        *snapshot = *position;
}

bool RpaSnapshotManager::WasListed(const QString& id) const
{
    return confirmed.contains(id);
}

int RpaSnapshotManager::GetBaseRevision(const QString& id) const
{
    const Revisions known = revisions.value(id);
    return known.base > 0 ? known.base : known.newest;
}

int RpaSnapshotManager::GetNewestRevision(const QString& id) const
{
    return revisions.value(id).newest;
}

void RpaSnapshotManager::SetBaseRevision(const QString& id, int revision)
{
    Revisions& known = revisions[id];
    known.base = revision;
    known.newest = std::max(known.newest, revision);
}

void RpaSnapshotManager::SetListedRevision(const QString& id, int revision)
{
    Revisions& known = revisions[id];
    known.newest = std::max(known.newest, revision);
}

void RpaSnapshotManager::Confirm(const RpaAppSnapshotPtr& snapshot)
{
    snapshot->SetNamed(false);
    RpaAppSnapshot record = *snapshot;
    record.SetAppData(QString());
    confirmed.insert(record.GetId(), record);
}

void RpaSnapshotManager::RebuildIndex()
{
    indexById.clear();
    indexById.reserve(snapshots.size());
    developCount = 0;
    for (int index = 0; index < snapshots.size(); ++index) {
        const auto& snapshot = snapshots.at(index);
        indexById.insert(snapshot->GetId(), index);
        developCount += snapshot->GetState() == AppSnapshotDevelop ? 1 : 0;
    }
}
