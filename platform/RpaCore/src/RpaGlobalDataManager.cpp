// SPDX-License-Identifier: Apache-2.0

#include <RpaCore/RpaGlobalDataManager.h>

RpaGlobalDataManager::RpaGlobalDataManager() : apiVersion(QStringLiteral("1.0.0")) {}

RpaGlobalDataManager* RpaGlobalDataManager::Instance()
{
    static RpaGlobalDataManager instance;
    return &instance;
}

bool RpaGlobalDataManager::GetSuperAdmin() const
{
    return superAdmin;
}

void RpaGlobalDataManager::SetSuperAdmin(bool value)
{
    superAdmin = value;
}

QString RpaGlobalDataManager::GetApiVersion() const
{
    return apiVersion;
}

void RpaGlobalDataManager::SetApiVersion(const QString& version)
{
    apiVersion = version;
}
