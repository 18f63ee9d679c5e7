// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaServiceClient/ServiceRoute.h>
#include <RpaServiceClient/releases/VersionServiceReleasedApp.h>

// The apps of the account's vendor that have an online version, newest release first.
struct ListOnlineAppsRequest
{
    using Answer = QVector<VersionServiceReleasedApp>;

    WbHttpRequest ToHttp() const { return ServiceRoute::Fetch("/online-apps"); }
};
