// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <RpaProcessData/RpaProcessDataExport.h>
#include <RpaProcessData/RpaStatement.h>

#include <QStringList>

class ProcessDataManager;
class RpaProcess;

// Variables that a part of a process reads and that nothing in it sets before.
struct RPAPROCESSDATA_EXPORT RpaPartVariables
{
    QStringList needed;  // those that the skipped part would have set,
    QStringList unknown; // and those that nothing sets at all; each sorted
};

// A visual process of which only a part is to run. A part holds all statements of the process, with their ids
// and in their places, so that numbers stay right; those that are skipped are disabled. A block around what
// runs is gone through once: a loop has one turn, a condition is taken as true, the error of an "except" as
// having happened. GUI thread only.
namespace RpaProcessPart
{
// From the statement to the end of the process: behind it in its own block, then behind the blocks around it.
// Other branches of those blocks are skipped, except for what is always carried out. Empty when there is no
// such statement.
RPAPROCESSDATA_EXPORT QVector<RpaStatement> FromHere(const RpaProcess& process, const QString& statementId);

// These statements with everything inside them, in their order. Empty when there is none of them.
RPAPROCESSDATA_EXPORT QVector<RpaStatement> Only(const RpaProcess& process, const QStringList& statementIds);

// A copy of all processes in which the named one has only the part.
RPAPROCESSDATA_EXPORT void CopyWithPart(const ProcessDataManager& processes, const QString& processName,
                                        const QVector<RpaStatement>& part, ProcessDataManager& copy);

// What the part of the named process, with the processes that it runs, needs to know.
RPAPROCESSDATA_EXPORT RpaPartVariables FindVariables(const ProcessDataManager& processes,
                                                     const QString& processName,
                                                     const QVector<RpaStatement>& part);
} // namespace RpaProcessPart
