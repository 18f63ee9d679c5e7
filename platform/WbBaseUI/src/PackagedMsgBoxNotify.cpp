#include <WbBaseUI/PackagedMsgBoxNotify.h>

PackagedMsgBoxNotify* PackagedMsgBoxNotify::Instance()
{
    static PackagedMsgBoxNotify notify;
    return &notify;
}
