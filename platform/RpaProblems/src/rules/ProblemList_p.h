// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaProblems/RpaProblem.h>
#include <RpaProcessData/RpaCheckInfo.h>

#include <QHash>
#include <QStringList>

// The problems as they are found: each once, with its id.
class ProblemList
{
public:
    // The id is made here, of rule, place and subject.
    void Add(RpaProblem problem);
    // What stops a run.
    void Add(const RpaCheckInfo& info);
    const QVector<RpaProblem>& Get() const { return problems; }

private:
    QVector<RpaProblem> problems;
    QHash<QString, QStringList> messages; // by the id that rule, place and subject make
};
