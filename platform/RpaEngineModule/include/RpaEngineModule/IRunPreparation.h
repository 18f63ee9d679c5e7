// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaEngineModule/RpaEngineModuleExport.h>

#include <QString>

// What runs need before they start, such as the packages of their app; the workstation knows, the engine
// asks. GUI thread only.
class RPAENGINEMODULE_EXPORT IRunPreparation
{
public:
    virtual ~IRunPreparation();

    // Why no run may start now, in the user's words; empty when one may.
    virtual QString GetRefusal() = 0;
    // The run that waits is given up, and what it waits for may end. Ends in SetWaiting(false).
    virtual void Stop() = 0;
};
