// SPDX-License-Identifier: Apache-2.0

#include "ReachedProcesses_p.h"

#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaCommandCatalogue.h>
#include <RpaProcessData/RpaProcess.h>

namespace
{

QStringList CalledBy(const RpaProcess& process)
{
    QStringList names;
    process.ForEach([&](const RpaStatementNode& node) {
        const RpaCommandInfo* const command = RpaCommandCatalogue::Instance()->Find(node.GetCommand());
        if (!command || !node.IsEffectivelyEnabled())
            return;
        for (const RpaArgumentInfo& argument : command->arguments)
            if (argument.type == RpaArgumentType::Process)
                names.append(node.GetArgument(argument.name));
    });
    return names;
}

} // namespace

QVector<const RpaProcess*> ReachedFrom(const ProcessDataManager& processes, const QString& processName)
{
    QVector<const RpaProcess*> reached;
    QStringList waiting{processName};
    while (!waiting.isEmpty()) {
        const RpaProcess* const process = processes.FindProcess(waiting.takeFirst());
        if (!process || reached.contains(process))
            continue;
        reached.append(process);
        waiting.append(CalledBy(*process));
    }
    return reached;
}
