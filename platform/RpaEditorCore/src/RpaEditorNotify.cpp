// SPDX-License-Identifier: Apache-2.0

#include <RpaEditorCore/RpaEditorNotify.h>

RpaEditorNotify* RpaEditorNotify::Instance()
{
    static RpaEditorNotify notify;
    return &notify;
}
