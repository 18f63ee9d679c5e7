#pragma once

#include <WbBaseUI/WbBaseUIExport.h>

#include <QWidget>

class WBBASEUI_EXPORT UIUtils
{
public:
    // Brings a window to the front; activate: gives it the keyboard too. Null is ignored.
    static void SetForeground(QWidget* window, bool activate);
};
