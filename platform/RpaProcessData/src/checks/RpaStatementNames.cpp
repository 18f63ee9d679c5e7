// SPDX-License-Identifier: Apache-2.0

#include <RpaProcessData/RpaCommandCatalogue.h>
#include <RpaProcessData/RpaExpression.h>
#include <RpaProcessData/RpaStatementNames.h>
#include <RpaProcessData/RpaStatementNode.h>

namespace
{
QString TextOf(const RpaStatementNode& node, const RpaArgumentInfo& argument)
{
    return node.GetValues().arguments.value(argument.name, argument.defaultValue);
}
} // namespace

QStringList RpaStatementNames::GetRead(const RpaStatementNode& node)
{
    QStringList names;
    const RpaCommandInfo* command = RpaCommandCatalogue::Instance()->Find(node.GetCommand());
    if (!command)
        return names;
    for (const RpaArgumentInfo& argument : command->arguments) {
        const QString text = TextOf(node, argument);
        if (argument.type == RpaArgumentType::Variable) {
            if (argument.changes && !text.trimmed().isEmpty())
                names.append(text.trimmed());
        } else if (RpaExpression::IsPython(argument.type, text)) {
            names.append(RpaExpression::GetVariables(RpaExpression::ToPython(argument.type, text)));
        }
    }
    names.removeDuplicates();
    return names;
}

QStringList RpaStatementNames::GetSet(const RpaStatementNode& node)
{
    QStringList names;
    const RpaCommandInfo* command = RpaCommandCatalogue::Instance()->Find(node.GetCommand());
    if (!command)
        return names;
    if (!node.GetValues().output.isEmpty())
        names.append(node.GetValues().output);
    for (const RpaArgumentInfo& argument : command->arguments)
        if (argument.type == RpaArgumentType::Variable && !argument.changes)
            names.append(TextOf(node, argument).trimmed());
    return names;
}
