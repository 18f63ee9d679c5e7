// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaServiceClient/ServiceRoute.h>
#include <RpaServiceClient/sessions/VersionServiceSession.h>

// Who the token of the settings stands for.
struct GetCurrentSessionRequest
{
    using Answer = VersionServiceSession;

    WbHttpRequest ToHttp() const { return ServiceRoute::Fetch("/sessions/current"); }
};
