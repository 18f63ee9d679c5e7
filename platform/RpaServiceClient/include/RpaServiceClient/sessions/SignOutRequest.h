// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaServiceClient/ServiceAnswers.h>
#include <RpaServiceClient/ServiceRoute.h>

// Ends the session of the settings' token at the server; who signs out takes it from the settings.
struct SignOutRequest
{
    using Answer = VersionServiceNothing;

    WbHttpRequest ToHttp() const { return ServiceRoute::ChangeOnly("DELETE", "/sessions/current"); }
};
