// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaServiceClient/ServiceAnswers.h>
#include <RpaServiceClient/ServiceRoute.h>

// For whoever saved that revision only.
struct NoteSaveRequest
{
    using Answer = VersionServiceNothing;

    QString versionId;
    int revision = 0;
    QString note; // up to 200 characters; empty takes the former away

    WbHttpRequest ToHttp() const
    {
        return ServiceRoute::Silent(
            ServiceRoute::Change("PUT", "/versions/" + ServiceRoute::Escaped(versionId) + "/note",
                                 {{QStringLiteral("revision"), revision}, {QStringLiteral("note"), note}}));
    }
    static constexpr auto Read = ServiceAnswers::ReadNothing;
};
