// SPDX-License-Identifier: Apache-2.0

#include <RpaServiceClient/ServiceAnswers.h>
#include <RpaServiceClient/ServiceRoute.h>
#include <RpaServiceClient/releases/VersionServiceReleasedApp.h>

using namespace ServiceAnswers;

std::optional<VersionServiceReleasedApp> VersionServiceReleasedApp::Read(const QJsonObject& json)
{
    const auto app = VersionServiceApp::Read(json.value(QLatin1String("app")).toObject());
    const QJsonObject version = json.value(QLatin1String("version")).toObject();
    if (!app)
        return std::nullopt;
    const VersionServiceReleasedApp released{*app,
                                             Text(version, "id"),
                                             Text(version, "name"),
                                             Text(version, "description"),
                                             version.value(QLatin1String("state")).toInt(),
                                             Time(json, "releasedAt")};
    if (!ServiceRoute::IsValidId(released.versionId) || (released.state != 2 && released.state != 3))
        return std::nullopt;
    return released;
}
