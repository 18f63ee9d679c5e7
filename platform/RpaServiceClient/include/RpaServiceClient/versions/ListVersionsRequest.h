// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaServiceClient/ServiceAnswers.h>
#include <RpaServiceClient/ServiceRoute.h>
#include <RpaServiceClient/versions/VersionServiceVersion.h>

#include <QSet>

// The versions of an app that the account may edit, newest first, each once.
struct ListVersionsRequest
{
    using Answer = QVector<VersionServiceVersion>;

    QString appId;

    WbHttpRequest ToHttp() const { return ServiceRoute::Fetch("/apps/%1/versions", appId); }
    static std::optional<Answer> Read(const WbHttpAnswer& answer)
    {
        const auto versions = ServiceAnswers::ReadAs<Answer>(answer);
        QSet<QString> ids;
        const Answer list = versions.value_or(Answer());
        for (const VersionServiceVersion& version : list)
            ids.insert(version.id);
        return ids.size() == list.size() ? versions : std::nullopt;
    }
};
