// SPDX-License-Identifier: Apache-2.0

#include <WbBaseUI/PackagedMsgBoxNotify.h>

PackagedMsgBoxNotify* PackagedMsgBoxNotify::Instance()
{
    static PackagedMsgBoxNotify notify;
    return &notify;
}
