#include "BrowserBorderWindow_p.h"

#include <WbBrowserLite/WbBrowserLite.h>

WbBrowserLite* WbBrowserLite::Instance()
{
    static WbBrowserLite instance;
    return &instance;
}

IBrowserBorderWindow* WbBrowserLite::CreateBrowserEmbed(QWidget* parent)
{
    return new BrowserBorderWindow(parent);
}
