// SPDX-License-Identifier: Apache-2.0

#include "CodeEdit_p.h"
#include "ProgramRunPlace_p.h"
#include "ProgramVariables_p.h"

#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaProcess.h>

#include <QTextBlock>

QString ProgramRunPlace::GetProcess() const
{
    const RpaProcess* const process = app ? app->GetProcessDataManager()->GetProcess(0) : nullptr;
    return process ? process->GetName() : QString();
}

bool ProgramRunPlace::FindCurrent(RpaDebugPlace& place) const
{
    place = {GetProcess(), QString(), edit->textCursor().blockNumber() + 1};
    return !place.processName.isEmpty();
}

bool ProgramRunPlace::FindSelected(RpaRunPlan& plan) const
{
    const QTextCursor cursor = edit->textCursor();
    const QTextDocument* const document = edit->document();
    const QTextBlock last = document->findBlock(cursor.selectionEnd());
    const int firstLine = document->findBlock(cursor.selectionStart()).blockNumber() + 1;
    // A selection that ends before the first letter of a line does not have it.
    const bool endsAbove = cursor.hasSelection() && cursor.selectionEnd() == last.position();
    plan.kind = RpaRunKind::Only;
    plan.place = {GetProcess(), QString(), firstLine};
    plan.lastLine = last.blockNumber() + (endsAbove ? 0 : 1);
    return HasSelection();
}

RpaPartVariables ProgramRunPlace::FindVariables(const RpaRunPlan& plan) const
{
    const int last = plan.kind == RpaRunKind::Only ? plan.lastLine : 0;
    return {ProgramVariables::FindNeeded(edit->toPlainText(), plan.place.line, last), {}};
}
