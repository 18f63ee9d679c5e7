// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaServiceClient/ServiceRoute.h>
#include <RpaServiceClient/versions/VersionServiceContent.h>
#include <RpaServiceClient/versions/VersionServiceVersion.h>

// Refused (412) when the version is not at the revision any more.
struct OverwriteVersionRequest
{
    using Answer = VersionServiceVersion;

    QString versionId;
    VersionServiceContent content;
    int revision = 0; // that the content is based on; 0: whatever it is

    WbHttpRequest ToHttp() const
    {
        WbHttpRequest request =
            ServiceRoute::AtRevision(ServiceRoute::Change("PUT", "/versions/%1", versionId), revision);
        content.PutInto(&request);
        return request;
    }
    static std::optional<Answer> Read(const WbHttpAnswer& answer) { return Answer::ReadSaved(answer); }
};
