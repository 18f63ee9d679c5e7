#pragma once

#include <WbBrowserLite/WbBrowserLiteExport.h>

#include <QWidget>

class IBrowserBorderWindow;
class IBrowserWidget;

// Makes embedded browsers. GUI thread only.
class WBBROWSERLITE_EXPORT WbBrowserLite
{
public:
    static WbBrowserLite* Instance();

    // Null where the library was built without a web engine. Owned by the parent.
    IBrowserWidget* CreateBrowserWidget(QWidget* parent);

    // A top-level window when the parent is null; the caller then owns it.
    IBrowserBorderWindow* CreateBrowserEmbed(QWidget* parent);

private:
    WbBrowserLite() = default;
};
