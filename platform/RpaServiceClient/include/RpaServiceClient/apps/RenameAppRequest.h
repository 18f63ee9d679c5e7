// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaServiceClient/ServiceRoute.h>
#include <RpaServiceClient/apps/VersionServiceApp.h>

// Refused with "name-taken" when another app of the vendor has the name.
struct RenameAppRequest
{
    using Answer = VersionServiceApp;

    QString appId;
    QString name; // 1–50 characters

    WbHttpRequest ToHttp() const
    {
        return ServiceRoute::Change("PATCH", "/apps/%1", appId, {{QStringLiteral("name"), name}});
    }
};
