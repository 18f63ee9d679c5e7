// SPDX-License-Identifier: Apache-2.0

#include <RpaServiceClient/ServiceAnswers.h>
#include <RpaServiceClient/ServiceRoute.h>
#include <RpaServiceClient/invitations/VersionServiceInvitation.h>

using namespace ServiceAnswers;

std::optional<VersionServiceInvitation> VersionServiceInvitation::Read(const QJsonObject& json)
{
    const VersionServiceInvitation invitation{Text(json, "id"),
                                              Text(json, "code"),
                                              Text(json, "appId"),
                                              Time(json, "createdAt"),
                                              Time(json, "expiresAt"),
                                              json.value(QLatin1String("mostUses")).toInt(-1),
                                              json.value(QLatin1String("uses")).toInt(-1),
                                              json.value(QLatin1String("revokedAt")).toDouble() != 0};
    if (!ServiceRoute::IsValidId(invitation.id) || invitation.code.isEmpty() || invitation.mostUses < 0 ||
        invitation.uses < 0)
        return std::nullopt;
    return invitation;
}
