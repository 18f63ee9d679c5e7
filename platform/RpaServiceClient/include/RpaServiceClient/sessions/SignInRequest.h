// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaServiceClient/ServiceAnswers.h>
#include <RpaServiceClient/ServiceRoute.h>
#include <RpaServiceClient/sessions/VersionServiceSession.h>

// Begins a session: its token is in the answer; who signs in puts it into the settings.
struct SignInRequest
{
    using Answer = VersionServiceSession;

    QString account;
    QString password;
    bool stay = false; // asks for a session that lasts while it is not used

    WbHttpRequest ToHttp() const
    {
        WbHttpRequest request = ServiceRoute::Change("POST", "/sessions", {},
                                                     {{QStringLiteral("account"), account},
                                                      {QStringLiteral("password"), password},
                                                      {QStringLiteral("stay"), stay}});
        request.hasSecretBody = true;
        // The token of an earlier session has no business here.
        request.bearerToken.clear();
        return request;
    }
    static std::optional<Answer> Read(const WbHttpAnswer& answer)
    {
        const auto session = ServiceAnswers::ReadAs<Answer>(answer);
        return session && !session->token.isEmpty() ? session : std::nullopt;
    }
};
