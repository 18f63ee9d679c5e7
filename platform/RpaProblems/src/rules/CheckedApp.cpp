// SPDX-License-Identifier: Apache-2.0

#include "CheckedApp_p.h"

CheckedApp::CheckedApp(const RpaAppCopy& copy) : app(copy)
{
    for (const RpaAppCopy::Process& process : app.processes)
        if (RpaProcess* added = processes.AddProcess(process.name)) {
            added->SetStatements(process.statements);
            added->SetProgramText(process.programText);
        }
}

void CheckedApp::ForEachEnabled(const Visit& visit) const
{
    for (int i = 0; i < processes.GetCount(); ++i) {
        const RpaProcess& process = *processes.GetProcess(i);
        process.ForEach([&](const RpaStatementNode& node) {
            const RpaCommandInfo* command = RpaCommandCatalogue::Instance()->Find(node.GetCommand());
            if (command && node.IsEffectivelyEnabled())
                visit(process, node, *command);
        });
    }
}

QStringList CheckedApp::CalledBy(const RpaProcess& process) const
{
    QStringList called;
    process.ForEach([&](const RpaStatementNode& node) {
        const RpaCommandInfo* command = RpaCommandCatalogue::Instance()->Find(node.GetCommand());
        if (!command || !node.IsEffectivelyEnabled())
            return;
        for (const RpaArgumentInfo& argument : command->arguments)
            if (argument.type == RpaArgumentType::Process && !called.contains(TextOf(node, argument)))
                called.append(TextOf(node, argument));
    });
    return called;
}

QString CheckedApp::TextOf(const RpaStatementNode& node, const RpaArgumentInfo& argument)
{
    return node.GetValues().arguments.value(argument.name, argument.defaultValue);
}
