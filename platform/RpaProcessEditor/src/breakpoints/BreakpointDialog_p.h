// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "ui_BreakpointDialog.h"

#include <RpaEngineModule/RpaDebugTypes.h>
#include <WbBaseUI/WbBaseDialog.h>

// Asks when a breakpoint stops, and whether it logs instead.
class BreakpointDialog : public WbBaseDialog
{
    Q_OBJECT

public:
    // place: what the author reads of where it is.
    BreakpointDialog(const RpaBreakpoint& breakpoint, const QString& place, QWidget* parent);

    RpaBreakpoint Breakpoint() const;
    bool IsToBeRemoved() const { return removes; }

private:
    RpaBreakpoint asked;
    bool removes = false;
    Ui::BreakpointDialog ui;
};
