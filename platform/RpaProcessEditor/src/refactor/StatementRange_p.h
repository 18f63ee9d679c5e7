// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaProcessData/RpaProcess.h>

#include <QStringList>
#include <QVector>

// Statements that an author chose to be put elsewhere as a whole, and whether that leaves the rest as it was.
class StatementRange
{
public:
    // ids: in the order shown, none inside another.
    StatementRange(const RpaProcess& process, const QStringList& ids);

    // Why they are no whole, in Chinese: they do not stand side by side, or a branch would lose the block that
    // it continues. Empty when they are.
    QString Problem() const;

    const QStringList& Ids() const { return ids; }
    QVector<RpaStatement> Statements() const;

    // Title of an enabled statement that leaves a loop around all of them; empty without one.
    QString LoopExit() const;
    // Whether an enabled statement ends the process.
    bool EndsProcess() const;

private:
    QString BranchProblem() const;

    QStringList ids;
    QVector<const RpaStatementNode*> nodes;
};
