// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaServiceClient/ServiceRoute.h>
#include <RpaServiceClient/apps/VersionServiceApp.h>

// Out of the bin, as it was; under the next free name when its own was taken meanwhile.
struct RestoreAppRequest
{
    using Answer = VersionServiceApp;

    QString appId;

    WbHttpRequest ToHttp() const { return ServiceRoute::Change("POST", "/deleted-apps/%1/restore", appId); }
};
