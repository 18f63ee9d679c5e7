// SPDX-License-Identifier: Apache-2.0

#include "ReachedProcesses_p.h"
#include "StatementCheck_p.h"

#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaCommandCatalogue.h>
#include <RpaProcessData/RpaProcess.h>
#include <RpaProcessData/RpaProcessCheck.h>

RpaProcessCheck::RpaProcessCheck(const ProcessDataManager& checkedProcesses) : processes(checkedProcesses) {}

void RpaProcessCheck::SetElementIds(const QStringList& ids)
{
    elementIds = ids;
    elementsKnown = true;
}

QList<RpaCheckInfo> RpaProcessCheck::Check(const QString& processName) const
{
    const QVector<const RpaProcess*> reached = ReachedFrom(processes, processName);
    const VariableUse variables(reached);
    QList<RpaCheckInfo> findings;
    for (const RpaProcess* process : reached) {
        StatementCheck check(*process, processes, findings);
        if (elementsKnown)
            check.SetElementIds(elementIds);
        check.Run();
        variables.FindUndefined(*process, findings);
        variables.FindDisabled(*process, findings);
    }
    return findings;
}

QList<RpaCheckInfo> RpaProcessCheck::CheckDisabledReferences() const
{
    QVector<const RpaProcess*> all;
    for (int i = 0; i < processes.GetCount(); ++i)
        all.append(processes.GetProcess(i));

    const VariableUse variables(all);
    QList<RpaCheckInfo> findings;
    for (const RpaProcess* process : qAsConst(all))
        variables.FindDisabled(*process, findings);
    return findings;
}
