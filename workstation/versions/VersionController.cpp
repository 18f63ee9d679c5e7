// SPDX-License-Identifier: Apache-2.0

#include "VersionController.h"

#include <RpaEditorCore/RpaSnapshotManager.h>
#include <RpaEditorLogic/RpaEditorLogic.h>
#include <RpaServiceClient/releases/ListReleasesRequest.h>
#include <RpaServiceClient/versions/ListSavesRequest.h>
#include <RpaServiceClient/versions/NoteSaveRequest.h>

#include <algorithm>

void VersionController::SetApp(const QString& appId)
{
    app = appId;
    saves.clear();
    releases.clear();
    problem.clear();
    waiting = 0;
    ++round;
    emit SigChanged();
}

void VersionController::Load()
{
    if (app.isEmpty() || IsLoading())
        return;
    waiting = 2;
    problem.clear();
    const quint64 number = ++round;
    client.Send(ListSavesRequest{app}, this, [this, number](const auto& result) {
        if (number != round)
            return;
        if (result.success)
            saves = result.value;
        Take(result.errorDesc);
    });
    client.Send(ListReleasesRequest{app}, this, [this, number](const auto& result) {
        if (number != round) {
            return;
        }
        if (result.success) {
            releases = result.value;
        }
        Take(result.errorDesc);
    });
    emit SigChanged();
}

void VersionController::Take(const QString& failure)
{
    --waiting;
    if (!failure.isEmpty())
        problem = failure;
    emit SigChanged();
}

QVector<VersionFacts> VersionController::GetVersions() const
{
    QVector<VersionFacts> versions;
    const RpaSnapshotManager* const manager = RpaEditorLogic::Instance()->GetDevSnapshotManager();
    for (int i = 0; i < manager->GetCount(); ++i) {
        const RpaAppSnapshotPtr record = manager->GetSnapshot(i);
        VersionFacts facts;
        facts.id = record->GetId();
        facts.name = record->GetName();
        facts.description = record->GetDesc();
        facts.state = record->GetState();
        std::copy_if(saves.cbegin(), saves.cend(), std::back_inserter(facts.saves),
                     [&facts](const VersionServiceSave& save) { return save.versionId == facts.id; });
        const auto release =
            std::find_if(releases.cbegin(), releases.cend(),
                         [&facts](const VersionServiceRelease& one) { return one.versionId == facts.id; });
        if (release != releases.cend())
            facts.release = *release;
        versions.append(facts);
    }
    return versions;
}

VersionFacts VersionController::FindShown(const QString& shownName) const
{
    const auto versions = GetVersions();
    const auto found =
        std::find_if(versions.cbegin(), versions.cend(), [&shownName](const VersionFacts& version) {
            return VersionWords::Name(version) == shownName;
        });
    return found == versions.cend() ? VersionFacts() : *found;
}

void VersionController::Note(const VersionServiceSave& save, const QString& note)
{
    client.Send(NoteSaveRequest{save.versionId, save.revision, note}, this,
                [this, save, note](const auto& result) {
                    if (result.success) {
                        TakeNote(save, note);
                        emit SigNoted();
                    } else {
                        emit SigNotNoted(result.errorDesc);
                    }
                });
}

void VersionController::TakeNote(const VersionServiceSave& save, const QString& note)
{
    for (VersionServiceSave& known : saves)
        if (known.versionId == save.versionId && known.revision == save.revision)
            known.note = note;
    emit SigChanged();
}
