// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaAppData/RpaAppDataExport.h>

#include <QString>

// Identity and manual of the app.
class RPAAPPDATA_EXPORT RpaAppExtendInfo
{
public:
    // Id of the app with the version service.
    QString GetAppId() const { return appId; }
    void SetAppId(const QString& value) { appId = value; }

    // Key of the app with the open service.
    QString GetOxsAppKey() const { return oxsAppKey; }
    void SetOxsAppKey(const QString& value) { oxsAppKey = value; }

    // 0 visual process, any other value program process.
    int GetAppKind() const { return appKind; }
    void SetAppKind(int value) { appKind = value; }

    // The usage instructions, as HTML.
    QString GetManual() const { return manual; }

    QString manual; // usage instructions as the rich editor gives them; written directly by its page

private:
    QString appId;
    QString oxsAppKey;
    int appKind = 0;
};
