// Where no web engine is available.
#include "BuiltInBrowser_p.h"

IBrowserWidget* CreateBuiltInBrowser(QWidget*)
{
    return nullptr;
}
