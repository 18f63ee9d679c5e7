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
        return ServiceRoute::AtRevision(ServiceRoute::ChangeOnly("DELETE", "/versions/%1", versionId),
                                        revision);
    }
};
