// SPDX-License-Identifier: Apache-2.0

#include <RpaCore/RpaAppSnapshot.h>
#include <RpaServiceClient/ServiceAnswers.h>
#include <RpaServiceClient/ServiceRoute.h>
#include <RpaServiceClient/releases/VersionServiceReleasedApp.h>

using namespace ServiceAnswers;

std::optional<VersionServiceReleasedApp> VersionServiceReleasedApp::Read(const QJsonObject& json)
{
    const auto app = VersionServiceApp::Read(json.value(QLatin1String("app")).toObject());
    const QJsonObject version = json.value(QLatin1String("version")).toObject();
    const auto state = IntMember(version, "state", AppSnapshotGray, AppSnapshotOnline);
    if (!app || !state)
        return std::nullopt;
    const VersionServiceReleasedApp released{
        *app,   Text(version, "id"),     Text(version, "name"), Text(version, "description"),
        *state, Time(json, "releasedAt")};
    return ServiceRoute::IsValidId(released.versionId) ? std::optional(released) : std::nullopt;
}
