// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "RunPlace_p.h"

#include <RpaAppData/RpaAppData.h>

class CodeEdit;

// Where the author is in the text of the program.
class ProgramRunPlace : public RunPlace
{
public:
    // The edit must outlive this.
    explicit ProgramRunPlace(const CodeEdit* codeEdit) : edit(codeEdit) {}

    void SetApp(const RpaAppDataPtr& appData) { app = appData; }

    QString GetProcess() const override;
    bool FindCurrent(RpaDebugPlace& place) const override;
    bool HasSelection() const override { return !GetProcess().isEmpty(); }
    // The line of the cursor when no text is selected.
    bool FindSelected(RpaRunPlan& plan) const override;
    RpaPartVariables FindVariables(const RpaRunPlan& plan) const override;

private:
    const CodeEdit* const edit;
    RpaAppDataPtr app;
};
