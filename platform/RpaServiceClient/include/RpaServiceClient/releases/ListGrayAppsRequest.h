// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaServiceClient/ServiceRoute.h>
#include <RpaServiceClient/releases/VersionServiceReleasedApp.h>

// The apps whose gray versions were opened to the account, newest release first.
struct ListGrayAppsRequest
{
    using Answer = QVector<VersionServiceReleasedApp>;

    WbHttpRequest ToHttp() const { return ServiceRoute::Fetch("/gray-apps"); }
};
