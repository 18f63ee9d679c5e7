// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbBaseUI/WbBaseUIExport.h>

#include <QString>

// What a notice is about: it decides its sign and its colour.
enum ENUM_TOAST_TYPE
{
    ToastSuccess = 0,
    ToastWarning = 1,
    ToastError = 2,
    ToastDone = 3,
    ToastInformation = 4,
};

// Short notices that go away by themselves, over the active window. The widget's object name is "WbToast",
// its text is in the label "labelToastText", its type in the property "toastType". GUI thread only.
class WBBASEUI_EXPORT WbToast
{
public:
    // Plain text; nothing is shown while there is no window.
    static void Show(const QString& text, ENUM_TOAST_TYPE type = ToastInformation);

    // Takes away the notices of all windows at once, for when whom they were meant for has left.
    static void Clear();
};
