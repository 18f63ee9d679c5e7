// SPDX-License-Identifier: Apache-2.0

#include <WbCore/WbGlobalData.h>

WbGlobalData* WbGlobalData::Instance()
{
    static WbGlobalData instance;
    return &instance;
}
