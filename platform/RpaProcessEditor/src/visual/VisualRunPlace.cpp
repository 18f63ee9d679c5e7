// SPDX-License-Identifier: Apache-2.0

#include "StatementView_p.h"
#include "VisualRunPlace_p.h"

QString VisualRunPlace::GetProcess() const
{
    const RpaProcess* const process = view->Statements()->Process();
    return process ? process->GetName() : QString();
}

bool VisualRunPlace::FindCurrent(RpaDebugPlace& place) const
{
    if (!HasSelection() || !view->currentIndex().isValid())
        return false;
    place = {GetProcess(), view->Statements()->NodeOf(view->currentIndex())->GetId(), 0};
    return true;
}

bool VisualRunPlace::HasSelection() const
{
    return !GetProcess().isEmpty() && view->selectionModel()->hasSelection();
}

bool VisualRunPlace::FindSelected(RpaRunPlan& plan) const
{
    if (!HasSelection())
        return false;
    plan.kind = RpaRunKind::Only;
    plan.statementIds = view->SelectedIds();
    plan.place = {GetProcess(), plan.statementIds.value(0), 0};
    return true;
}

RpaPartVariables VisualRunPlace::FindVariables(const RpaRunPlan& plan) const
{
    const RpaProcess* const process = view->Statements()->Process();
    if (!process || !app)
        return {};
    const QVector<RpaStatement> part = plan.kind == RpaRunKind::FromHere
                                           ? RpaProcessPart::FromHere(*process, plan.place.statementId)
                                           : RpaProcessPart::Only(*process, plan.statementIds);
    return RpaProcessPart::FindVariables(*app->GetProcessDataManager(), process->GetName(), part);
}
