// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaServiceClient/ServiceRoute.h>
#include <RpaServiceClient/invitations/VersionServiceInvitation.h>

// For the creator of the app only. Refused with "no-gray" while the app has no gray version.
struct CreateInvitationRequest
{
    using Answer = VersionServiceInvitation;

    QString appId;
    int validDays = 0; // 1–365
    int mostUses = 0;  // 1–10000

    WbHttpRequest ToHttp() const
    {
        return ServiceRoute::Change(
            "POST", "/apps/%1/invitations", appId,
            {{QStringLiteral("validDays"), validDays}, {QStringLiteral("mostUses"), mostUses}});
    }
};
