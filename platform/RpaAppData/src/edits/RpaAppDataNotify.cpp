// SPDX-License-Identifier: Apache-2.0

#include <RpaAppData/RpaAppDataNotify.h>

RpaAppDataNotify* RpaAppDataNotify::Instance()
{
    // Never destroyed: app data may outlive every static object.
    static auto* const notify = new RpaAppDataNotify;
    return notify;
}
