// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaServiceClient/ServiceAnswers.h>
#include <RpaServiceClient/ServiceRoute.h>

// What the account did. An event that comes twice counts once; what is no event is left out.
struct SendUsageEventsRequest
{
    using Answer = VersionServiceNothing;

    QJsonArray events; // at most 100 objects with "id", "event" and "time" in UTC milliseconds

    WbHttpRequest ToHttp() const
    {
        return ServiceRoute::ChangeOnly("POST", "/usage-events", {}, {{QStringLiteral("events"), events}});
    }
};
