// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaEngineModule/RpaDebugTypes.h>
#include <RpaProcessData/RpaProcessPart.h>

// Where the author is on a page of processes, for runs that begin or end there.
class RunPlace
{
public:
    virtual ~RunPlace() = default;

    // That is shown; empty without one.
    virtual QString GetProcess() const = 0;

    // The statement or the line at which the author is. False without one.
    virtual bool FindCurrent(RpaDebugPlace& place) const = 0;

    virtual bool HasSelection() const = 0;
    // Fills in what is selected, as a run of it only. False when nothing is.
    virtual bool FindSelected(RpaRunPlan& plan) const = 0;

    // What a run of that part of the process needs to know.
    virtual RpaPartVariables FindVariables(const RpaRunPlan& plan) const = 0;
};
