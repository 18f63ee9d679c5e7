// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaServiceClient/ServiceAnswers.h>
#include <RpaServiceClient/ServiceRoute.h>
#include <RpaServiceClient/apps/VersionServiceApp.h>

// The apps the account may edit, newest change first.
struct ListAppsRequest
{
    using Answer = QVector<VersionServiceApp>;

    QString nameFilter = {}; // empty: all

    WbHttpRequest ToHttp() const
    {
        return ServiceRoute::Fetch("/apps?query=" + ServiceRoute::Escaped(nameFilter));
    }
    static std::optional<Answer> Read(const WbHttpAnswer& answer)
    {
        return ServiceAnswers::ReadList<Answer>(answer, "apps");
    }
};
