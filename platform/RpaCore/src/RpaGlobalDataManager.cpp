// SPDX-License-Identifier: Apache-2.0

#include <RpaCore/RpaGlobalDataManager.h>

RpaGlobalDataManager::RpaGlobalDataManager() : apiVersion(QStringLiteral("1.0.0")) {}

RpaGlobalDataManager* RpaGlobalDataManager::Instance()
{
    static RpaGlobalDataManager instance;
    return &instance;
}
