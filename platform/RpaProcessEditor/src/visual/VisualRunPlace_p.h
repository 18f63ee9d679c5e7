// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "RunPlace_p.h"

#include <RpaAppData/RpaAppData.h>

class StatementView;

// Where the author is in the tree of statements.
class VisualRunPlace : public RunPlace
{
public:
    // The view must outlive this.
    explicit VisualRunPlace(const StatementView* statementView) : view(statementView) {}

    void SetApp(const RpaAppDataPtr& appData) { app = appData; }

    QString GetProcess() const override;
    bool FindCurrent(RpaDebugPlace& place) const override;
    bool HasSelection() const override;
    bool FindSelected(RpaRunPlan& plan) const override;
    RpaPartVariables FindVariables(const RpaRunPlan& plan) const override;

private:
    const StatementView* const view;
    RpaAppDataPtr app;
};
