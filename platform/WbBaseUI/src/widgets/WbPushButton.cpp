// SPDX-License-Identifier: Apache-2.0

#include "StyleRefresh_p.h"

#include <WbBaseUI/WbPushButton.h>

WbPushButton::WbPushButton(QWidget* parent, int type, Wb::BaseUIBusiness family)
    : QPushButton(parent), buttonType(type), business(family)
{
}

WbPushButton::~WbPushButton() = default;

int WbPushButton::GetButtonType() const
{
    return buttonType;
}

void WbPushButton::SetButtonType(int type)
{
    buttonType = type;
    RefreshStyle(this);
}

Wb::BaseUIBusiness WbPushButton::GetBusiness() const
{
    return business;
}

int WbPushButton::GetBusinessValue() const
{
    return static_cast<int>(business);
}

void WbPushButton::SetBusiness(Wb::BaseUIBusiness family)
{
    business = family;
}
