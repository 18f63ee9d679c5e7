// SPDX-License-Identifier: Apache-2.0

#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaCommandCatalogue.h>
#include <RpaProcessData/RpaProcess.h>
#include <RpaProcessData/RpaProcessCalls.h>

namespace
{
// False when the statement does not run the process.
bool RenameCall(RpaStatement& values, const QString& name, const QString& newName)
{
    const RpaCommandInfo* command = RpaCommandCatalogue::Instance()->Find(values.command);
    bool calls = false;
    if (!command)
        return calls;
    for (const RpaArgumentInfo& argument : command->arguments)
        if (argument.type == RpaArgumentType::Process && values.arguments.value(argument.name) == name) {
            values.arguments.insert(argument.name, newName);
            calls = true;
        }
    return calls;
}
} // namespace

QVector<RpaStatementChange> RpaProcessCalls::Renamed(const ProcessDataManager& manager, const QString& name,
                                                     const QString& newName)
{
    QVector<RpaStatementChange> changes;
    for (int i = 0; i < manager.GetCount(); ++i) {
        const RpaProcess* process = manager.GetProcess(i);
        process->ForEach([&](const RpaStatementNode& node) {
            RpaStatement after = node.GetValues();
            if (RenameCall(after, name, newName))
                changes.append({process->GetName(), node.GetValues(), after});
        });
    }
    return changes;
}
