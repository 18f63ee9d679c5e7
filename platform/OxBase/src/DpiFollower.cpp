// SPDX-License-Identifier: Apache-2.0

#include <OxBase/DpiFollower.h>
#include <OxBase/DpiTool.h>

DpiFollower::DpiFollower(QObject* owner, const std::function<void()>& adjust) : QObject(owner), apply(adjust)
{
    DpiTool::Register(this);
}

DpiFollower::~DpiFollower()
{
    DpiTool::Unregister(this);
}

void DpiFollower::Follow(QObject* owner, const std::function<void()>& apply)
{
    apply();
    new DpiFollower(owner, apply); // goes with the owner
}
