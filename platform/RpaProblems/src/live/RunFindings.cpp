// SPDX-License-Identifier: Apache-2.0

#include "ProblemList_p.h"
#include "RunFindings_p.h"

#include <RpaAppData/RpaAppData.h>
#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaProcess.h>

#include <QSet>

namespace
{
const RpaProcess* ProcessOf(const RpaProblemPlace& place, const RpaAppData* app)
{
    return app ? app->GetProcessDataManager()->FindProcess(place.processName) : nullptr;
}

// What it does, not what is said about it.
bool HaveOneEffect(RpaStatement a, const RpaStatement& b)
{
    a.note = b.note;
    a.breakpoint = b.breakpoint;
    a.children = b.children;
    return a == b;
}
} // namespace

void RunFindings::Take(const QList<RpaCheckInfo>& list, const RpaAppData* app)
{
    findings.clear();
    ProblemList problems;
    for (const RpaCheckInfo& info : list)
        problems.Add(info);
    for (const RpaProblem& problem : problems.Get()) {
        const RpaProcess* process = ProcessOf(problem.place, app);
        const RpaStatementNode* node = process ? process->Find(problem.place.statementId) : nullptr;
        if (process && (node || problem.place.statementId.isEmpty()))
            findings.append(
                {problem, node ? node->GetValues() : RpaStatement(), process->GetProgramText(), false});
    }
}

void RunFindings::Compare(const QVector<RpaProblem>& now, const RpaAppData* app)
{
    QSet<QString> listed;
    for (const RpaProblem& problem : now)
        listed.insert(problem.id);
    QVector<Finding> standing;
    for (Finding finding : qAsConst(findings)) {
        const bool wasListed = finding.isListed;
        finding.isListed = listed.contains(finding.problem.id);
        if (finding.isListed || (!wasListed && DoesTheSame(finding, app)))
            standing.append(finding);
    }
    findings = standing;
}

QVector<RpaProblem> RunFindings::Get() const
{
    QVector<RpaProblem> problems;
    for (const Finding& finding : findings)
        problems.append(finding.problem);
    return problems;
}

// Where a run failed, no check can tell whether it would fail again.
bool RunFindings::DoesTheSame(const Finding& finding, const RpaAppData* app)
{
    const RpaProcess* process = ProcessOf(finding.problem.place, app);
    if (!process)
        return false;
    const RpaStatementNode* node = process->Find(finding.problem.place.statementId);
    if (!finding.problem.place.statementId.isEmpty())
        return node && HaveOneEffect(node->GetValues(), finding.atFault);
    return process->GetProgramText() == finding.programText;
}
