// SPDX-License-Identifier: Apache-2.0

#include "PythonNames_p.h"

#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaCommandCatalogue.h>
#include <RpaProcessData/RpaExpression.h>
#include <RpaProcessData/RpaProcess.h>
#include <RpaProcessData/RpaStatementNames.h>
#include <RpaProcessData/RpaVariableRename.h>

#include <functional>

namespace
{
void ForEach(const ProcessDataManager& manager,
             const std::function<void(const RpaProcess&, const RpaStatementNode&)>& call)
{
    for (int i = 0; i < manager.GetCount(); ++i) {
        const RpaProcess& process = *manager.GetProcess(i);
        process.ForEach([&](const RpaStatementNode& node) { call(process, node); });
    }
}

QSet<QString> NamesOf(const RpaStatementNode& node)
{
    const QStringList set = RpaStatementNames::GetSet(node);
    QSet<QString> names(set.cbegin(), set.cend());
    names.insert(node.GetValues().output);
    const RpaCommandInfo* command = RpaCommandCatalogue::Instance()->Find(node.GetCommand());
    if (!command)
        return names;
    // A variable would take the place of the module.
    for (const QString& import : command->imports)
        names.unite(PythonNames::AllIn(import));
    for (const RpaArgumentInfo& argument : command->arguments) {
        const QString text = node.GetArgument(argument.name);
        if (argument.type == RpaArgumentType::Variable)
            names.insert(text.trimmed());
        else if (RpaExpression::IsPython(argument.type, text))
            names.unite(PythonNames::AllIn(text));
    }
    return names;
}
} // namespace

RpaVariableRename::RpaVariableRename(const ProcessDataManager& manager, const QString& oldName,
                                     const QString& newName)
    : from(oldName), to(newName)
{
    if (from.isEmpty())
        return;
    ForEach(manager, [this](const RpaProcess& process, const RpaStatementNode& node) {
        const int before = places;
        const RpaStatement after = Renamed(node.GetValues());
        if (places > before)
            changes.append({process.GetName(), node.GetValues(), after});
    });
}

RpaStatement RpaVariableRename::Renamed(const RpaStatement& values)
{
    RpaStatement after = values;
    if (after.output == from) {
        after.output = to;
        ++places;
        ++setters;
    }
    const RpaCommandInfo* command = RpaCommandCatalogue::Instance()->Find(values.command);
    if (!command)
        return after;
    for (const RpaArgumentInfo& argument : command->arguments) {
        const QString text = values.arguments.value(argument.name, argument.defaultValue);
        const int before = places;
        QString renamed = text;
        if (argument.type == RpaArgumentType::Variable && text.trimmed() == from) {
            renamed = to;
            ++places;
            setters += argument.changes ? 0 : 1;
        } else if (RpaExpression::IsPython(argument.type, text)) {
            renamed = RenamedPython(text);
        }
        if (places > before)
            after.arguments.insert(argument.name, renamed);
    }
    return after;
}

// The "=" before an expression is a sign like any other.
QString RpaVariableRename::RenamedPython(const QString& python)
{
    QString renamed = python;
    if (!python.contains(from))
        return renamed; // as in most: reading one takes its time
    const QVector<PythonNames::Place> read = PythonNames::ReadIn(python);
    for (auto place = read.crbegin(); place != read.crend(); ++place) {
        if (place->name != from)
            continue;
        renamed.replace(place->begin, from.size(), to);
        ++places;
    }
    return renamed;
}

QString RpaVariableRename::Problem(const ProcessDataManager& manager, const QString& to)
{
    if (to.isEmpty())
        return QStringLiteral("请填写变量名");
    if (!RpaExpression::IsVariableName(to))
        return QStringLiteral("变量名只能用文字、字母、数字和下划线，不能以数字开头");
    if (PythonNames::IsBuiltIn(to))
        return QStringLiteral("“%1”是系统使用的名称").arg(to);
    bool taken = false;
    ForEach(manager, [&](const RpaProcess&, const RpaStatementNode& node) {
        taken = taken || NamesOf(node).contains(to);
    });
    return taken ? QStringLiteral("“%1”已经在使用").arg(to) : QString();
}

QStringList RpaVariableRename::NamesIn(const ProcessDataManager& manager)
{
    QSet<QString> names;
    ForEach(manager, [&names](const RpaProcess&, const RpaStatementNode& node) {
        const QStringList set = RpaStatementNames::GetSet(node);
        names.unite(QSet<QString>(set.cbegin(), set.cend()));
    });
    names.remove(QString());
    QStringList sorted = names.values();
    sorted.sort();
    return sorted;
}
