#include "DraftPlan.h"

#include <RpaCore/RpaAppSnapshot.h>

#include <algorithm>

namespace
{
DraftPlan::Base BaseOf(const RpaDraft& draft, const VersionServiceVersion* version)
{
    if (!version) {
        return draft.versionId.isEmpty() ? DraftPlan::Base::None : DraftPlan::Base::Gone;
    }
    if (version->state != AppSnapshotDevelop) {
        return DraftPlan::Base::Released;
    }
    return version->revision == draft.baseRevision ? DraftPlan::Base::Current : DraftPlan::Base::Newer;
}
} // namespace

DraftPlan DraftPlan::For(const RpaDraft& draft, const QVector<VersionServiceVersion>& versions)
{
    DraftPlan plan;
    plan.isSaved = std::any_of(versions.begin(), versions.end(), [&](const VersionServiceVersion& version) {
        return version.sha256 == draft.sha256 && (draft.versionId.isEmpty() || version.id == draft.versionId);
    });
    const auto own =
        std::find_if(versions.begin(), versions.end(),
                     [&](const VersionServiceVersion& version) { return version.id == draft.versionId; });
    const VersionServiceVersion* const version = own == versions.end() ? nullptr : &*own;
    plan.base = BaseOf(draft, version);
    if (version) {
        plan.versionName = version->name;
        plan.revision = version->revision;
        plan.savedBy = version->pin;
    }

    const auto develop =
        std::find_if(versions.begin(), versions.end(),
                     [](const VersionServiceVersion& other) { return other.state == AppSnapshotDevelop; });
    if (develop == versions.end()) {
        return plan; // the editor opens none of the others by itself
    }
    plan.targetId = version ? version->id : develop->id;
    plan.targetRevision = version ? draft.baseRevision : 0;
    return plan;
}
