// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaServiceClient/ServiceRoute.h>
#include <RpaServiceClient/apps/VersionServiceApp.h>

// The apps the account may edit, newest change first.
struct ListAppsRequest
{
    using Answer = QVector<VersionServiceApp>;

    QString nameFilter = {}; // empty: all

    WbHttpRequest ToHttp() const { return ServiceRoute::Fetch("/apps?query=%1", nameFilter); }
};
