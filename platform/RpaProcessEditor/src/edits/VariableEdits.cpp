// SPDX-License-Identifier: Apache-2.0

// Variables that get another name, as steps of ProcessEdits.
#include "ProcessEdits_p.h"
#include "ProcessSteps_p.h"

#include <RpaProcessData/RpaCommandCatalogue.h>
#include <RpaProcessData/RpaVariableRename.h>

#include <utility>

namespace
{
QString NameIn(const RpaStatement& values, const QString& argument)
{
    return argument.isEmpty() ? values.output : values.arguments.value(argument);
}
} // namespace

int ProcessEdits::RenameVariable(const QString& from, const QString& to)
{
    EndTyping();
    const RpaVariableRename rename(*Manager(), from, to);
    if (from != to)
        ChangeAll(rename.GetChanges(), QStringLiteral("重命名变量"));
    return rename.CountPlaces();
}

void ProcessEdits::NoteName(const QString& processName, const RpaStatement& before, const RpaStatement& after)
{
    if (typedName.statementId == after.id && typedName.processName == processName)
        return;
    if (before.output != after.output) {
        typedName = {processName, after.id, QString(), before.output};
        return;
    }
    const RpaCommandInfo* command = RpaCommandCatalogue::Instance()->Find(after.command);
    if (!command)
        return;
    for (const RpaArgumentInfo& argument : command->arguments) {
        const bool sets = argument.type == RpaArgumentType::Variable && !argument.changes;
        const QString name = before.arguments.value(argument.name);
        if (sets && name != after.arguments.value(argument.name))
            typedName = {processName, after.id, argument.name, name};
    }
}

void ProcessEdits::FollowName()
{
    const TypedName typed = std::exchange(typedName, TypedName());
    const auto* last = dynamic_cast<const ValuesStep*>(stack.command(stack.index() - 1));
    const RpaProcess* process = Manager()->FindProcess(typed.processName);
    const RpaStatementNode* node = process ? process->Find(typed.statementId) : nullptr;
    // Its step must still be the last one: it is taken back, so that both become one.
    if (!node || !last || !last->IsTypedIn(typed.processName, typed.statementId) ||
        NameIn(last->Before(), typed.argument) != typed.before)
        return;
    const QString to = NameIn(node->GetValues(), typed.argument);
    const RpaVariableRename uses(*Manager(), typed.before, to);
    if (to == typed.before || uses.CountPlaces() == 0 || uses.CountSetters() > 0)
        return;
    stack.undo();
    if (!RpaVariableRename::Problem(*Manager(), to).isEmpty()) {
        stack.redo(); // it writes to another variable from now on
        return;
    }
    emit SigVariableFollowed(typed.before, to, RenameVariable(typed.before, to) - 1);
}
