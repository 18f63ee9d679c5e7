// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaServiceClient/ServiceRoute.h>
#include <RpaServiceClient/apps/VersionServiceApp.h>

// A new app without versions.
struct CreateAppRequest
{
    using Answer = VersionServiceApp;

    QString name;         // 1–50 characters
    int kind = 0;         // 0 visual process, 1 program process
    bool anyName = false; // under the next free name ("name 2") when that one is taken

    WbHttpRequest ToHttp() const
    {
        QJsonObject body{{QStringLiteral("name"), name}, {QStringLiteral("kind"), kind}};
        if (anyName)
            body.insert(QStringLiteral("anyName"), true);
        return ServiceRoute::Change("POST", "/apps", {}, body);
    }
};
