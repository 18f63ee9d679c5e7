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
        return ServiceRoute::ChangeOnly(
            "PUT", "/versions/%1/note", versionId,
            {{QStringLiteral("revision"), revision}, {QStringLiteral("note"), note}});
    }
};
