// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <WbBaseUI/WbBaseUIExport.h>

#include <QPointer>
#include <QWidget>

// The workstation's main window.
class WBBASEUI_EXPORT UIMain
{
public:
    // The one of the process, GUI thread only.
    static UIMain* Instance();

    // The main window; with a widget, the window that widget stands in. Null before the workstation has set
    // it.
    QWidget* GetMainWidget(QWidget* of) const;
    void SetMainWidget(QWidget* widget) { mainWidget = widget; }

private:
    UIMain() = default;

    QPointer<QWidget> mainWidget;
};
