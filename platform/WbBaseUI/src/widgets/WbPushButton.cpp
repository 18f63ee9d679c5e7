// SPDX-License-Identifier: Apache-2.0

#include "StyleRefresh_p.h"

#include <WbBaseUI/WbPushButton.h>

WbPushButton::WbPushButton(QWidget* parent, int type, Wb::BaseUIBusiness family)
    : QPushButton(parent), buttonType(type), business(family)
{
}

void WbPushButton::SetButtonType(int type)
{
    buttonType = type;
    RefreshStyle(this);
}

int WbPushButton::GetBusinessValue() const
{
    return static_cast<int>(business);
}
