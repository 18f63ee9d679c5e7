// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaServiceClient/ServiceRoute.h>
#include <RpaServiceClient/apps/VersionServiceApp.h>

// A new app with all versions of that one, in development, under the next free name.
struct CopyAppRequest
{
    using Answer = VersionServiceApp;

    QString appId;

    WbHttpRequest ToHttp() const { return ServiceRoute::Change("POST", "/apps/%1/copies", appId); }
};
