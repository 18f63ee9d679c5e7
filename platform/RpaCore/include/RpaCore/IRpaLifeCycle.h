// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaCore/RpaCoreExport.h>

// Answer of a logic that is asked whether the workstation may close.
enum class BeforeCloseResult
{
    NothingPending = 0,
    Resolved = 1,
    Refused = 2,
};

// A part of the workstation that has a say when it closes.
class RPACORE_EXPORT IRpaLifeCycle
{
public:
    virtual ~IRpaLifeCycle();

    // May ask the user and wait for a server answer. GUI thread.
    virtual BeforeCloseResult BeforeClose() = 0;
};
