// SPDX-License-Identifier: Apache-2.0

#include "RunSettings_p.h"

#include <RpaEngineModule/RpaDebugSession.h>
#include <RpaEngineModule/RpaEngineModule.h>

RunSettings* RunSettings::Instance()
{
    static RunSettings instance;
    return &instance;
}

void RunSettings::RemoveUser()
{
    if (--users > 0)
        return;
    SetSlowMs(0);
    SetStopsAtErrors(false);
}

void RunSettings::SetSlowMs(int milliseconds)
{
    if (slowMs == milliseconds)
        return;
    slowMs = milliseconds;
    RpaEngineModule::Instance()->GetDebugSession()->SetSlowMotion(slowMs);
    emit SigChanged();
}

void RunSettings::SetStopsAtErrors(bool stops)
{
    if (stopsAtErrors == stops)
        return;
    stopsAtErrors = stops;
    RpaEngineModule::Instance()->GetDebugSession()->SetErrorStop(stops ? RpaErrorStop::Unhandled
                                                                       : RpaErrorStop::Never);
    emit SigChanged();
}
