// SPDX-License-Identifier: Apache-2.0

#include "RpaProcessTranslator_p.h"

#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaCommandCatalogue.h>
#include <RpaProcessData/RpaExpression.h>
#include <RpaProcessData/RpaPlaces.h>
#include <RpaProcessData/RpaProcess.h>

namespace
{

constexpr int longestTitle = 80; // of a line of program text

const RpaCommandInfo* CommandOf(const RpaStatementNode& statement)
{
    return RpaCommandCatalogue::Instance()->Find(statement.GetCommand());
}

QString FunctionName(int number)
{
    return QStringLiteral("process_%1").arg(number + 1);
}
} // namespace

RpaProgram RpaProcessTranslator::TakeText(const RpaProcess& process)
{
    RpaProgram program;
    program.source = process.GetProgramText();
    const QStringList texts = program.source.split(QLatin1Char('\n'));
    program.originByLine.reserve(texts.size());
    for (int line = 1; line <= texts.size(); ++line)
        program.originByLine.append(
            {process.GetName(), {}, line, texts.at(line - 1).trimmed().left(longestTitle)});
    return program;
}

RpaProgram RpaProcessTranslator::Translate(const QString& processName)
{
    Collect(processName);
    if (reached.isEmpty())
        return {};
    for (const QString& import : qAsConst(imports))
        AddLine(import, 0);
    for (const QString& name : qAsConst(reached))
        TranslateProcess(*processes.FindProcess(name));
    currentProcess.clear();
    QStringList table;
    for (int i = 0; i < reached.size(); ++i)
        table << RpaExpression::ToPythonLiteral(reached.at(i)) + QStringLiteral(": ") + FunctionName(i);
    AddLine(QStringLiteral("rpa.set_processes({%1})").arg(table.join(QStringLiteral(", "))), 0);
    AddLine(FunctionName(0) + QStringLiteral("()"), 0);

    RpaProgram program;
    program.source = lines.join(QLatin1Char('\n')) + QLatin1Char('\n');
    program.originByLine = origins;
    program.visual = true;
    return program;
}

void RpaProcessTranslator::Collect(const QString& processName)
{
    QSet<QString> known;
    QStringList waiting{processName};
    while (!waiting.isEmpty()) {
        const QString name = waiting.takeFirst();
        const RpaProcess* process = processes.FindProcess(name);
        if (!process || known.contains(name))
            continue;
        known << name;
        reached << name;
        process->ForEach([&](const RpaStatementNode& statement) {
            const RpaCommandInfo* command = CommandOf(statement);
            if (!command || !statement.IsEffectivelyEnabled())
                return;
            for (const QString& import : command->imports)
                if (!imports.contains(import))
                    imports << import;
            for (const RpaArgumentInfo& argument : command->arguments)
                if (argument.type == RpaArgumentType::Process)
                    waiting << statement.GetArgument(argument.name);
        });
    }
}

void RpaProcessTranslator::TranslateProcess(const RpaProcess& process)
{
    currentProcess = process.GetName();
    numbers.clear();
    titles.clear();
    process.ForEach([this](const RpaStatementNode& statement) {
        const RpaCommandInfo* command = CommandOf(statement);
        numbers.insert(statement.GetId(), numbers.size() + 1);
        titles.insert(statement.GetId(), command ? command->title : QString());
    });
    if (!lines.isEmpty())
        AddLine({}, 0);
    const QString comment = currentProcess.simplified();
    AddLine(QStringLiteral("# ") + comment, 0);
    AddLine(QStringLiteral("def %1():").arg(FunctionName(reached.indexOf(currentProcess))), 0);
    const QStringList assigned = AssignedNames(process);
    if (!assigned.isEmpty())
        AddLine(QStringLiteral("global ") + assigned.join(QStringLiteral(", ")), 1);
    TranslateChildren(*process.GetRoot(), 1);
    AddLine({}, 0);
}

QStringList RpaProcessTranslator::AssignedNames(const RpaProcess& process) const
{
    QSet<QString> names;
    process.ForEach([&](const RpaStatementNode& statement) {
        const RpaCommandInfo* command = CommandOf(statement);
        if (!command || !statement.IsEffectivelyEnabled())
            return;
        names << statement.GetValues().output;
        for (const RpaArgumentInfo& argument : command->arguments)
            if (argument.type == RpaArgumentType::Variable)
                names << statement.GetArgument(argument.name);
    });
    names.remove(QString());
    QStringList sorted = names.values();
    sorted.sort();
    return sorted;
}

void RpaProcessTranslator::TranslateChildren(const RpaStatementNode& parent, int depth)
{
    const int before = lines.size();
    for (int row = 0; row < parent.GetChildCount(); ++row) {
        const RpaStatementNode& statement = *parent.GetChild(row);
        if (statement.GetValues().enabled)
            TranslateStatement(statement, depth);
    }
    if (lines.size() == before)
        AddLine(QStringLiteral("pass"), depth, parent.GetId());
}

void RpaProcessTranslator::TranslateStatement(const RpaStatementNode& statement, int depth)
{
    const RpaCommandInfo* command = CommandOf(statement);
    if (!command) {
        const QString name = RpaExpression::ToPythonLiteral(statement.GetCommand());
        AddLine(QStringLiteral("rpa.unknown_command(%1)").arg(name), depth, statement.GetId());
        return;
    }
    const QStringList templateLines = command->pythonTemplate.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    for (const QString& line : templateLines)
        AddLine(Fill(line, *command, statement), depth, statement.GetId());
    if (command->HasChildren())
        TranslateChildren(statement, depth + 1);
}

QString RpaProcessTranslator::Fill(const QString& line, const RpaCommandInfo& command,
                                   const RpaStatementNode& statement) const
{
    const RpaStatement& values = statement.GetValues();
    return RpaPlaces::Fill(line, [&](const QString& place) {
        if (place == QLatin1String("output"))
            return values.output.isEmpty() ? QStringLiteral("_") : values.output;
        const RpaArgumentInfo* argument = command.FindArgument(place);
        return argument ? RpaExpression::ToPython(argument->type,
                                                  values.arguments.value(place, argument->defaultValue))
                        : QString();
    });
}

void RpaProcessTranslator::AddLine(const QString& text, int depth, const QString& statementId)
{
    // A value of several lines (an expression typed with line breaks) takes several lines of the program.
    const QStringList parts = text.split(QLatin1Char('\n'));
    for (const QString& part : parts) {
        lines << (part.isEmpty() ? QString() : QString(depth * 4, QLatin1Char(' ')) + part);
        origins << RpaProgramOrigin{currentProcess, statementId, numbers.value(statementId),
                                    titles.value(statementId)};
    }
}
