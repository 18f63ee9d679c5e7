// SPDX-License-Identifier: Apache-2.0

#include "ToastStack_p.h"

#include <WbBaseUI/WbToast.h>

#include <QApplication>
#include <QWidget>

void WbToast::Show(const QString& text, ENUM_TOAST_TYPE type)
{
    if (QWidget* window = ToastWindow())
        ToastStack::Of(window)->Show(text, type);
}

void WbToast::Clear()
{
    for (QWidget* window : QApplication::topLevelWidgets())
        if (auto* stack = window->findChild<ToastStack*>(QString(), Qt::FindDirectChildrenOnly))
            stack->Clear();
}
