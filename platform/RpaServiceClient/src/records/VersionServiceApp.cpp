// SPDX-License-Identifier: Apache-2.0

#include <RpaServiceClient/ServiceAnswers.h>
#include <RpaServiceClient/ServiceRoute.h>
#include <RpaServiceClient/apps/VersionServiceApp.h>

using namespace ServiceAnswers;

std::optional<VersionServiceApp> VersionServiceApp::Read(const QJsonObject& json)
{
    VersionServiceApp app;
    app.id = Text(json, "id");
    app.name = Text(json, "name");
    app.kind = json.value(QLatin1String("kind")).toInt(-1);
    app.creatorPin = Text(json, "creator");
    app.creatorName = Text(json, "creatorName");
    app.oxsAppKey = Text(json, "oxsAppKey");
    app.createdAt = Time(json, "createdAt");
    app.changedAt = Time(json, "changedAt");
    app.changedByPin = Text(json, "changedBy");
    app.changedByName = Text(json, "changedByName");
    for (const QJsonValue tag : json.value(QLatin1String("tags")).toArray())
        app.tags.append(tag.toString());
    app.state = json.value(QLatin1String("state")).toInt(1);
    if (!ServiceRoute::IsValidId(app.id) || app.name.isEmpty() || app.kind < 0)
        return std::nullopt;
    return app;
}
