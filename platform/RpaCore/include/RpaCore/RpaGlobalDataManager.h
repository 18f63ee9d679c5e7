// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaCore/RpaCoreExport.h>

#include <QString>

// Facts of this workstation that every part may need. Set by the workstation. GUI thread only.
class RPACORE_EXPORT RpaGlobalDataManager
{
public:
    // The one of the process.
    static RpaGlobalDataManager* Instance();

    // Whether the signed-in user is a super administrator; false at first.
    bool GetSuperAdmin() const { return superAdmin; }
    void SetSuperAdmin(bool value) { superAdmin = value; }

    // Version of the app-data format that this client writes, dotted ("1.0.0").
    QString GetApiVersion() const { return apiVersion; }
    void SetApiVersion(const QString& version) { apiVersion = version; }

private:
    RpaGlobalDataManager();

    bool superAdmin = false;
    QString apiVersion;
};
