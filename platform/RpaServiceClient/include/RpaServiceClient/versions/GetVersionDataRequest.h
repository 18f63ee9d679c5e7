// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaServiceClient/ServiceRoute.h>
#include <WbHttpModule/WbHttpAnswer.h>

#include <optional>

// The app data of a version that the account may edit or run, verified against its digest. What it holds is for
// whoever asks to judge; the outline in the answer tells.
struct GetVersionDataRequest
{
    using Answer = QByteArray;

    QString versionId;

    WbHttpRequest ToHttp() const
    {
        WbHttpRequest request = ServiceRoute::Fetch("/versions/%1/data", versionId);
        request.expectation.contentDigest = true;
        request.expectation.outline = true;
        return request;
    }
    static std::optional<Answer> Read(const WbHttpAnswer& answer) { return answer.body; }
};
