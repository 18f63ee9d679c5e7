// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaServiceClient/ServiceRoute.h>
#include <RpaServiceClient/releases/VersionServiceReleasedApp.h>

// Brings what the account may run now; redeeming again changes nothing.
struct RedeemInvitationRequest
{
    using Answer = VersionServiceReleasedApp;

    QString code; // as typed

    WbHttpRequest ToHttp() const
    {
        return ServiceRoute::Change("POST", "/invitations/redeem", {}, {{QStringLiteral("code"), code}});
    }
};
