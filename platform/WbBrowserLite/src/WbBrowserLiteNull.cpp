// The factory where no web engine is available.
#include <WbBrowserLite/IBrowserWidget.h>
#include <WbBrowserLite/WbBrowserLite.h>

IBrowserWidget* WbBrowserLite::CreateBrowserWidget(QWidget*)
{
    return nullptr;
}
