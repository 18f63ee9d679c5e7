// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaServiceClient/ServiceAnswers.h>
#include <RpaServiceClient/ServiceRoute.h>
#include <RpaServiceClient/versions/VersionServiceVersion.h>

// What became of a release.
struct VersionServiceReleaseOutcome
{
    bool isDone = false;
    bool needTip = false; // what was done needs a word to the author
    QString message;      // why it is not done
    VersionServiceVersion version;

    // Nothing when a field is missing or wrong.
    static std::optional<VersionServiceReleaseOutcome> Read(const QJsonObject& json)
    {
        const auto isDone = ServiceAnswers::IntMember(json, "result", 0, 1);
        const QJsonValue needTip = json.value(QLatin1String("needTip"));
        const auto version = VersionServiceVersion::Read(json.value(QLatin1String("version")).toObject());
        if (!isDone || !needTip.isBool() || !version)
            return std::nullopt;
        return VersionServiceReleaseOutcome{
            *isDone == 1, needTip.toBool(),
            ServiceAnswers::Presentable(ServiceAnswers::Text(json, "message")), *version};
    }
};

// Gives the version to users. Refused (412) when it is not at the revision any more.
struct ReleaseVersionRequest
{
    using Answer = VersionServiceReleaseOutcome;

    QString versionId;
    int publishType = 0; // 1 gray release, 2 publish online
    int revision = 0;    // 0: whatever it is

    WbHttpRequest ToHttp() const
    {
        return ServiceRoute::AtRevision(ServiceRoute::Change("POST", "/versions/%1/release", versionId,
                                                             {{QStringLiteral("type"), publishType}}),
                                        revision);
    }
};
