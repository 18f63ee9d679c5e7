// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaServiceClient/ServiceRoute.h>
#include <RpaServiceClient/versions/VersionServiceContent.h>
#include <RpaServiceClient/versions/VersionServiceVersion.h>

// Adds a develop version. Nobody's editor hears of it.
struct CreateVersionRequest
{
    using Answer = VersionServiceVersion;

    QString appId;
    VersionServiceContent content;

    WbHttpRequest ToHttp() const
    {
        WbHttpRequest request = ServiceRoute::Change("POST", "/apps/%1/versions", appId);
        content.PutInto(&request);
        return request;
    }
    static std::optional<Answer> Read(const WbHttpAnswer& answer) { return Answer::ReadSaved(answer); }
};
