// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaServiceClient/ServiceAnswers.h>
#include <RpaServiceClient/ServiceRoute.h>

// Gives users another version or none, and brings the id of the one that they have then. What is so already
// stays so. Refused with "release-changed" when users have another one than `from` by now.
struct TakeBackRequest
{
    using Answer = QString;

    QString appId;
    int state = 0; // 2 gray, 3 online
    QString from;  // the version that users have by what the author saw; empty: none
    QString to;    // the one that they shall have, which was released before; empty: none
    QString reason;

    WbHttpRequest ToHttp() const
    {
        return ServiceRoute::Change("POST", "/apps/%1/take-back", appId,
                                    {{QStringLiteral("state"), state},
                                     {QStringLiteral("from"), from},
                                     {QStringLiteral("to"), to},
                                     {QStringLiteral("reason"), reason}});
    }
    static std::optional<Answer> Read(const WbHttpAnswer& answer)
    {
        const QJsonValue id = ServiceAnswers::ObjectOf(answer).value(QLatin1String("versionId"));
        const bool isUsable =
            id.isString() && (id.toString().isEmpty() || ServiceRoute::IsValidId(id.toString()));
        return isUsable ? std::optional(id.toString()) : std::nullopt;
    }
};
