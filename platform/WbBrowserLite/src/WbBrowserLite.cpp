#include "BrowserBorderWindow_p.h"
#include "BuiltInBrowser_p.h"

#include <WbBrowserLite/WbBrowserLite.h>

#include <utility>

WbBrowserLite* WbBrowserLite::Instance()
{
    static WbBrowserLite instance;
    return &instance;
}

IBrowserWidget* WbBrowserLite::CreateBrowserWidget(QWidget* parent)
{
    return browserFactory ? browserFactory(parent) : CreateBuiltInBrowser(parent);
}

void WbBrowserLite::SetBrowserFactory(Factory factory)
{
    browserFactory = std::move(factory);
}

IBrowserBorderWindow* WbBrowserLite::CreateBrowserEmbed(QWidget* parent)
{
    return new BrowserBorderWindow(parent);
}
