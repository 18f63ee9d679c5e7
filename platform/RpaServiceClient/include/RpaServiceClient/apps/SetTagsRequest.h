// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaServiceClient/ServiceRoute.h>
#include <RpaServiceClient/apps/VersionServiceApp.h>

#include <QJsonArray>

// Gives an app these tags in place of its former ones.
struct SetTagsRequest
{
    using Answer = VersionServiceApp;

    QString appId;
    QStringList tags; // at most 10 of 1–20 characters, each once

    WbHttpRequest ToHttp() const
    {
        return ServiceRoute::Change("PATCH", "/apps/%1", appId,
                                    {{QStringLiteral("tags"), QJsonArray::fromStringList(tags)}});
    }
};
