// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaServiceClient/ServiceAnswers.h>
#include <RpaServiceClient/ServiceRoute.h>

// Into the bin, for its creator and administrators.
struct DeleteAppRequest
{
    using Answer = VersionServiceNothing;

    QString appId;

    WbHttpRequest ToHttp() const { return ServiceRoute::ChangeOnly("DELETE", "/apps/%1", appId); }
};
