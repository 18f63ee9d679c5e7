// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaServiceClient/ServiceRoute.h>
#include <RpaServiceClient/invitations/VersionServiceInvitation.h>

// For the creator of the app only. Whoever redeemed it keeps what it gave.
struct RevokeInvitationRequest
{
    using Answer = VersionServiceInvitation;

    QString invitationId;

    WbHttpRequest ToHttp() const { return ServiceRoute::Change("DELETE", "/invitations/%1", invitationId); }
};
