#include <RpaEditorCore/RpaEditorNotify.h>

RpaEditorNotify* RpaEditorNotify::Instance()
{
    static RpaEditorNotify notify;
    return &notify;
}
