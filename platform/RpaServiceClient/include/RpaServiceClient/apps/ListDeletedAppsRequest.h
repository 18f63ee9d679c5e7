// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaServiceClient/ServiceAnswers.h>
#include <RpaServiceClient/ServiceRoute.h>
#include <RpaServiceClient/apps/VersionServiceApp.h>

// An app in the bin.
struct VersionServiceDeletedApp
{
    static constexpr const char* listName = "apps";
    VersionServiceApp app;
    QDateTime deletedAt; // UTC

    // Nothing when a field is missing or wrong.
    static std::optional<VersionServiceDeletedApp> Read(const QJsonObject& json)
    {
        const auto app = VersionServiceApp::Read(json.value(QLatin1String("app")).toObject());
        if (!app)
            return std::nullopt;
        return VersionServiceDeletedApp{*app, ServiceAnswers::Time(json, "deletedAt")};
    }
};

// What the account may restore, deleted last first.
struct ListDeletedAppsRequest
{
    using Answer = QVector<VersionServiceDeletedApp>;

    WbHttpRequest ToHttp() const { return ServiceRoute::Fetch("/deleted-apps"); }
};
