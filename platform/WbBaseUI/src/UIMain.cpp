// SPDX-License-Identifier: Apache-2.0

#include <WbBaseUI/UIMain.h>

UIMain* UIMain::Instance()
{
    static UIMain instance;
    return &instance;
}

QWidget* UIMain::GetMainWidget(QWidget* of) const
{
    return of ? of->window() : mainWidget.data();
}
