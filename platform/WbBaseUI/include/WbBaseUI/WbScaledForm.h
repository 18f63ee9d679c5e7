// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbBaseUI/WbBaseUIExport.h>

class QWidget;

// Keeps the lengths of a form, designed in pixels at 100 %, at the scale of DpiTool. GUI thread only.
class WBBASEUI_EXPORT WbScaledForm
{
public:
    // The form as it stands is the design: margins and spacings of its layouts (which have to be given: the
    // style's own are scaled already), smallest and largest sizes of its widgets. Applied now, and again after
    // each change of the scale until the form goes. What a child of another class keeps inside, and who follows
    // the scale itself, is left alone.
    static void Follow(QWidget* form);
};
