// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaCore/RpaAppSnapshot.h>
#include <RpaServiceClient/ServiceAnswers.h>
#include <RpaServiceClient/ServiceRoute.h>

#include <QDateTime>

#include <algorithm>

// A gray or online version as the authors of its app see it.
struct VersionServiceRelease
{
    static constexpr const char* listName = "releases";
    QString versionId;
    QString versionName;
    QString description;
    int state = 0;          // 2 gray, 3 online
    QDateTime releasedAt;   // UTC
    bool present = false;   // the one of its state that users have
    bool withdrawn = false; // taken back from users

    // Nothing when a field is missing or wrong.
    static std::optional<VersionServiceRelease> Read(const QJsonObject& json)
    {
        using namespace ServiceAnswers;
        const QJsonObject version = json.value(QLatin1String("version")).toObject();
        const auto state = IntMember(version, "state", AppSnapshotGray, AppSnapshotOnline);
        const VersionServiceRelease release{Text(version, "id"),
                                            Text(version, "name"),
                                            Text(version, "description"),
                                            state.value_or(0),
                                            Time(json, "releasedAt"),
                                            json.value(QLatin1String("present")).toBool(),
                                            version.value(QLatin1String("withdrawnAt")).toDouble() != 0};
        return ServiceRoute::IsValidId(release.versionId) && state ? std::optional(release) : std::nullopt;
    }
};

// The gray and online versions of an app that the account may edit, newest release first.
struct ListReleasesRequest
{
    using Answer = QVector<VersionServiceRelease>;

    QString appId;

    WbHttpRequest ToHttp() const { return ServiceRoute::Fetch("/apps/%1/releases", appId); }
    static std::optional<Answer> Read(const WbHttpAnswer& answer)
    {
        const auto releases = ServiceAnswers::ReadAs<Answer>(answer);
        // Users have one version of a state; whoever is told of two would take back the wrong one.
        const auto count = [&releases](int state) {
            return std::count_if(releases->cbegin(), releases->cend(), [state](const auto& release) {
                return release.present && release.state == state;
            });
        };
        return releases && count(AppSnapshotGray) < 2 && count(AppSnapshotOnline) < 2 ? releases
                                                                                      : std::nullopt;
    }
};
