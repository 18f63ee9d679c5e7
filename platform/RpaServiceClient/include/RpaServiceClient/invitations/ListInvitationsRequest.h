// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaServiceClient/ServiceRoute.h>
#include <RpaServiceClient/invitations/VersionServiceInvitation.h>

// For the creator of the app only. All invitations, newest first.
struct ListInvitationsRequest
{
    using Answer = QVector<VersionServiceInvitation>;

    QString appId;

    WbHttpRequest ToHttp() const { return ServiceRoute::Fetch("/apps/%1/invitations", appId); }
};
