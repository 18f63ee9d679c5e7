// SPDX-License-Identifier: Apache-2.0

// Where no web engine is available.
#include "BuiltInBrowser_p.h"

#include <QString>

IBrowserWidget* CreateBuiltInBrowser(QWidget*)
{
    return nullptr;
}

QString BuiltInEngineName()
{
    return {};
}
