// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaServiceClient/ServiceAnswers.h>
#include <RpaServiceClient/ServiceRoute.h>

// Refused (412) when the version is not at the revision any more.
struct DeleteVersionRequest
{
    using Answer = VersionServiceNothing;

    QString versionId;
    int revision = 0; // 0: whatever it is

    WbHttpRequest ToHttp() const
    {
        WbHttpRequest request = ServiceRoute::Silent(
            ServiceRoute::Change("DELETE", "/versions/" + ServiceRoute::Escaped(versionId)));
        ServiceRoute::AddRevision(&request, revision);
        return request;
    }
    static constexpr auto Read = ServiceAnswers::ReadNothing;
};
