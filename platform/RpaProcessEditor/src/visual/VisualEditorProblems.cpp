// SPDX-License-Identifier: Apache-2.0

// Mends problems of the processes in the visual editor.
#include "VisualEditorParts_p.h"

#include <RpaProblems/RpaProblemFixes.h>

// The problem may be of a moment ago: what it is about is looked for again.
bool VisualEditorParts::MakeFix(const RpaProblem& problem)
{
    RpaProcess* process = edits ? edits->Manager()->FindProcess(problem.place.processName) : nullptr;
    const RpaStatementNode* node = process ? process->Find(problem.place.statementId) : nullptr;
    if (!node)
        return false;
    if (problem.fix == RpaProblemFix::CreateVariable) {
        edits->Insert(*process, QString(), 0, {RpaProblemFixes::MakeVariable(problem)},
                      QStringLiteral("新建变量"));
        return true;
    }
    RpaStatement values = node->GetValues();
    if (!RpaProblemFixes::MakeInStatement(values, problem))
        return false;
    edits->SetValues(*process, values, QString(), QStringLiteral("移除参数"));
    return true;
}
