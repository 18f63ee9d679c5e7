// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaServiceClient/ServiceAnswers.h>
#include <RpaServiceClient/ServiceRoute.h>

// Out of the bin for good.
struct PurgeAppRequest
{
    using Answer = VersionServiceNothing;

    QString appId;

    WbHttpRequest ToHttp() const { return ServiceRoute::ChangeOnly("DELETE", "/deleted-apps/%1", appId); }
};
