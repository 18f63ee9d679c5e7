// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaCore/RpaCoreExport.h>

#include <QString>

// Launch information of an app: what the host hands to the editor.
class RPACORE_EXPORT RobotExecuteInfo
{
public:
    // Id of the app with the version service.
    QString GetAppId() const { return appId; }
    void SetAppId(const QString& value) { appId = value; }

    // What the user calls the app.
    QString GetAppName() const { return appName; }
    void SetAppName(const QString& value) { appName = value; }

    // Account id of the app's creator.
    QString GetCreator() const { return creator; }
    void SetCreator(const QString& value) { creator = value; }

    // Key of the app with the open service.
    QString GetOxsAppKey() const { return oxsAppKey; }
    void SetOxsAppKey(const QString& value) { oxsAppKey = value; }

    // 0 visual process, 1 program process.
    int GetAppKind() const { return appKind; }
    void SetAppKind(int value) { appKind = value; }

private:
    QString appId;
    QString appName;
    QString creator;
    QString oxsAppKey;
    int appKind = 0;
};
