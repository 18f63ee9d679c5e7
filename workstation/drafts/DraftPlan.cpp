// SPDX-License-Identifier: Apache-2.0

#include "DraftPlan.h"

#include <RpaCore/RpaAppSnapshot.h>

#include <algorithm>

namespace
{
// What the version holds was sent in the course of this work; only the answer got lost.
bool IsOwnSave(const RpaDraft& draft, const VersionServiceVersion& version)
{
    return version.revision > draft.baseRevision && draft.inDoubt.contains(version.sha256);
}

// The version that the draft goes on from; null: none that is listed.
const VersionServiceVersion* VersionOf(const RpaDraft& draft, const QVector<VersionServiceVersion>& versions)
{
    const auto own =
        std::find_if(versions.begin(), versions.end(), [&](const VersionServiceVersion& version) {
            return draft.versionId.isEmpty() ? IsOwnSave(draft, version) : version.id == draft.versionId;
        });
    return own == versions.end() ? nullptr : &*own;
}

DraftPlan::Base BaseOf(const RpaDraft& draft, const VersionServiceVersion* version)
{
    if (!version)
        return draft.versionId.isEmpty() ? DraftPlan::Base::None : DraftPlan::Base::Gone;
    if (version->state != AppSnapshotDevelop)
        return DraftPlan::Base::Released;
    const bool isBase = version->revision == draft.baseRevision;
    return isBase || IsOwnSave(draft, *version) ? DraftPlan::Base::Current : DraftPlan::Base::Newer;
}
} // namespace

DraftPlan DraftPlan::For(const RpaDraft& draft, const QVector<VersionServiceVersion>& versions)
{
    DraftPlan plan;
    plan.isSaved = std::any_of(versions.begin(), versions.end(), [&](const VersionServiceVersion& version) {
        return version.sha256 == draft.sha256 && (draft.versionId.isEmpty() || version.id == draft.versionId);
    });
    const VersionServiceVersion* const version = VersionOf(draft, versions);
    plan.base = BaseOf(draft, version);
    plan.baseRevision = plan.base == Base::Current ? version->revision : draft.baseRevision;
    if (version) {
        plan.versionName = version->name;
        plan.revision = version->revision;
        plan.savedBy = version->pin;
    }

    const auto develop =
        std::find_if(versions.begin(), versions.end(),
                     [](const VersionServiceVersion& other) { return other.state == AppSnapshotDevelop; });
    if (develop == versions.end())
        return plan; // the editor opens none of the others by itself
    plan.targetId = version ? version->id : develop->id;
    plan.targetRevision = version ? plan.baseRevision : 0;
    return plan;
}
