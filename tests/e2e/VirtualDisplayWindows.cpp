// SPDX-License-Identifier: Apache-2.0

#include "VirtualDisplay.h"

VirtualDisplay::VirtualDisplay() = default;

VirtualDisplay::~VirtualDisplay() = default;

bool VirtualDisplay::HasRealOne()
{
    return true;
}

bool VirtualDisplay::Start(int, int)
{
    problem = QStringLiteral("Windows has a screen of its own; leave --virtual-display out");
    return false;
}
