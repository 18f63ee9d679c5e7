// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaAppData/RpaAppDataExport.h>

#include <QString>

// What a run needs to know of the app it runs.
class RPAAPPDATA_EXPORT RpaAppRunTimeInfo
{
public:
    // Id of the app with the version service.
    QString GetAppId() const { return appId; }
    void SetAppId(const QString& value) { appId = value; }

    // Key of the app with the open service.
    QString GetOxsAppKey() const { return oxsAppKey; }
    void SetOxsAppKey(const QString& value) { oxsAppKey = value; }

    // "develop" in the editor.
    QString GetEnvironment() const { return environment; }
    void SetEnvironment(const QString& value) { environment = value; }

private:
    QString appId;
    QString oxsAppKey;
    QString environment;
};
