// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaCore/RpaCoreExport.h>

#include <QList>

class IRpaLifeCycle;

// Knows every logic that has a say when the workstation closes. GUI thread only.
class RPACORE_EXPORT RpaGlobalLifeCycle
{
public:
    // The one of the process.
    static RpaGlobalLifeCycle* Instance();

    // A logic is asked once per close however often it was added.
    void AddLogic(IRpaLifeCycle* logic);
    void RemoveLogic(IRpaLifeCycle* logic);

    // Asks every logic in the order of registration and stops at the first refusal. True: close. A logic that
    // goes away while another is asked is skipped; a call during a running one answers false.
    bool BeforeClose();

private:
    RpaGlobalLifeCycle() = default;

    QList<IRpaLifeCycle*> logics;
    bool asking = false;
};
