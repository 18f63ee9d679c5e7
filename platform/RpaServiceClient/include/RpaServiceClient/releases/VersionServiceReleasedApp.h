// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaServiceClient/apps/VersionServiceApp.h>

#include <QMetaType>

// What a user may run: the newest online or gray version of an app.
struct RPASERVICECLIENT_EXPORT VersionServiceReleasedApp
{
    static constexpr const char* listName = "apps";
    VersionServiceApp app;
    QString versionId;
    QString versionName;
    QString description;  // of the version
    int state = 0;        // 2 gray, 3 online
    QDateTime releasedAt; // UTC

    // Nothing when a field is missing or wrong.
    static std::optional<VersionServiceReleasedApp> Read(const QJsonObject& json);
};

Q_DECLARE_METATYPE(VersionServiceReleasedApp)
