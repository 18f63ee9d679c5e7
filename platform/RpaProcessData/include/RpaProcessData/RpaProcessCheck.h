// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaProcessData/RpaCheckInfo.h>
#include <RpaProcessData/RpaProcessDataExport.h>

#include <QList>
#include <QStringList>

class ProcessDataManager;
class RpaProcess;

// Finds the mistakes in a process that can be told without running it. Rules (names in RpaCheckInfo::rule):
//   unknown-command, missing-argument, wrong-argument, missing-output, undefined-variable, outside-loop,
//   misplaced-branch, missing-process, missing-element, disabled-reference
// Disabled statements are not checked.
class RPAPROCESSDATA_EXPORT RpaProcessCheck
{
public:
    // The processes must outlive the check.
    explicit RpaProcessCheck(const ProcessDataManager& processes);

    // Ids of the captured web elements; without this call the rule missing-element is not applied.
    void SetElementIds(const QStringList& ids);

    // Every finding of one process, in the order of its statements, and of every process that it runs.
    QList<RpaCheckInfo> Check(const QString& processName) const;

    // Only the rule disabled-reference: an enabled statement uses a variable that only disabled statements
    // define. Of all processes.
    QList<RpaCheckInfo> CheckDisabledReferences() const;

private:
    const ProcessDataManager& processes;
    QStringList elementIds;
    bool elementsKnown = false;
};
