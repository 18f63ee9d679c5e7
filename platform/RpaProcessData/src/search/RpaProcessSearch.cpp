// SPDX-License-Identifier: Apache-2.0

#include "PythonNames_p.h"

#include <RpaProcessData/ProcessDataManager.h>
#include <RpaProcessData/RpaCommandCatalogue.h>
#include <RpaProcessData/RpaExpression.h>
#include <RpaProcessData/RpaProcess.h>
#include <RpaProcessData/RpaProcessSearch.h>

#include <algorithm>

namespace
{
using Type = RpaArgumentType;

// Null for what only another version knows.
const RpaArgumentInfo* SearchedArgument(const QString& command, const QString& name)
{
    const RpaCommandInfo* info = RpaCommandCatalogue::Instance()->Find(command);
    return info ? info->FindArgument(name) : nullptr;
}

bool IsReadByAuthors(Type type, const QString& text)
{
    if (type == Type::Switch)
        return RpaExpression::IsPython(type, text);
    return type != Type::Choice && type != Type::Element;
}

// Names that stand in an argument; begin counts in its text.
QVector<QPair<QString, int>> NamesInText(Type type, const QString& text)
{
    if (type == Type::Variable)
        return {{text, 0}};
    QVector<QPair<QString, int>> names;
    if (RpaExpression::IsPython(type, text)) {
        const QVector<PythonNames::Place> read = PythonNames::ReadIn(text);
        for (const PythonNames::Place& name : read)
            names.append({name.name, name.begin});
    }
    return names;
}

bool IsWordSign(QChar sign)
{
    return sign.isLetterOrNumber() || sign.isSurrogate() || sign == QLatin1Char('_');
}

QString NameProblem(const QString& name)
{
    const bool fits =
        RpaExpression::IsVariableName(name.trimmed()) && !PythonNames::IsBuiltIn(name.trimmed());
    return fits ? QString() : QStringLiteral("“%1”不能作为变量名").arg(name);
}

void Put(const RpaSearchPlace& place, const QString& after, RpaStatement& values)
{
    using Kind = RpaSearchPlace::Kind;
    if (place.kind == Kind::Note && values.note == place.text)
        values.note = after;
    else if (place.kind == Kind::Output && values.output == place.text)
        values.output = after;
    else if (place.kind == Kind::Argument && values.arguments.value(place.argument) == place.text)
        values.arguments.insert(place.argument, after);
}

bool IsMarkedAsExpression(Type type)
{
    return type == Type::Text || type == Type::File || type == Type::Folder || type == Type::Parameter;
}

QString ExpressionProblem(Type type, const QString& before, const QString& after)
{
    const bool was = RpaExpression::IsPython(type, before);
    const bool is = RpaExpression::IsPython(type, after);
    if (IsMarkedAsExpression(type) && was != is)
        return was ? QStringLiteral("替换后不再是表达式") : QStringLiteral("替换后会变成表达式");
    const auto isWhole = [type](const QString& text) {
        return RpaExpression::IsWellFormed(RpaExpression::ToPython(type, text));
    };
    if (is && !isWhole(after) && (!was || isWhole(before)))
        return QStringLiteral("替换后表达式不完整");
    return QString();
}
} // namespace

QVector<RpaSearchPlace> RpaProcessSearch::Find(const ProcessDataManager& manager) const
{
    QVector<RpaSearchPlace> places;
    for (int i = 0; i < manager.GetCount() && !options.text.isEmpty(); ++i)
        FindIn(*manager.GetProcess(i), places);
    return places;
}

void RpaProcessSearch::FindIn(const RpaProcess& process, QVector<RpaSearchPlace>& places) const
{
    using Kind = RpaSearchPlace::Kind;
    int line = 0;
    const QString name = process.GetName();
    process.ForEach([&](const RpaStatementNode& node) {
        ++line;
        const RpaStatement& values = node.GetValues();
        const auto add = [&](Kind kind, const QString& argument, const QString& text,
                             const QVector<int>& begins) {
            if (!begins.isEmpty())
                places.append({name, values.id, values.command, line, kind, argument, text, begins});
        };
        for (auto it = values.arguments.begin(); it != values.arguments.end(); ++it)
            add(Kind::Argument, it.key(), it.value(), BeginsInArgument(node, it.key(), it.value()));
        if (options.inNames && !values.output.isEmpty())
            add(Kind::Output, QString(), values.output, BeginsIn(values.output));
        if (options.inNotes && !values.note.isEmpty())
            add(Kind::Note, QString(), values.note, BeginsIn(values.note));
    });
}

QVector<int> RpaProcessSearch::BeginsIn(const QString& text) const
{
    QVector<int> begins;
    const Qt::CaseSensitivity sensitivity = options.matchCase ? Qt::CaseSensitive : Qt::CaseInsensitive;
    int at = text.indexOf(options.text, 0, sensitivity);
    while (at >= 0) {
        const bool counts = !options.wholeWords || IsWholeWord(text, at);
        if (counts)
            begins.append(at);
        at = text.indexOf(options.text, at + (counts ? options.text.size() : 1), sensitivity);
    }
    return begins;
}

bool RpaProcessSearch::IsWholeWord(const QString& text, int begin) const
{
    const int end = begin + options.text.size();
    const bool goesOn = end < text.size() && IsWordSign(text.at(end)) && IsWordSign(options.text.back());
    return !goesOn && (begin == 0 || !IsWordSign(text.at(begin - 1)) || !IsWordSign(options.text.front()));
}

QVector<int> RpaProcessSearch::BeginsInArgument(const RpaStatementNode& node, const QString& name,
                                                const QString& text) const
{
    QVector<int> begins = BeginsIn(text);
    if (begins.isEmpty() || (!options.inNames && !options.inTexts))
        return {};
    const RpaArgumentInfo* argument = SearchedArgument(node.GetCommand(), name);
    if (!argument)
        return options.inTexts ? begins : QVector<int>();
    if (!IsReadByAuthors(argument->type, text))
        return {};
    if (options.inNames && options.inTexts)
        return begins;
    const QVector<Name> names = NamesInText(argument->type, text);
    const auto isLeftOut = [&](int begin) {
        const bool inName = std::any_of(names.begin(), names.end(), [&](const Name& each) {
            return each.second <= begin && begin + options.text.size() <= each.second + each.first.size();
        });
        return inName != options.inNames;
    };
    begins.erase(std::remove_if(begins.begin(), begins.end(), isLeftOut), begins.end());
    return begins;
}

QString RpaProcessSearch::Replaced(const RpaSearchPlace& place, const QString& with) const
{
    QString text = place.text;
    for (auto begin = place.begins.crbegin(); begin != place.begins.crend(); ++begin)
        text.replace(*begin, options.text.size(), with);
    return text;
}

QString RpaProcessSearch::Problem(const ProcessDataManager& manager, const RpaSearchPlace& place,
                                  const QString& with) const
{
    if (place.kind == RpaSearchPlace::Kind::Note)
        return QString();
    const QString after = Replaced(place, with);
    if (place.kind == RpaSearchPlace::Kind::Output)
        return NameProblem(after);
    const RpaArgumentInfo* argument = SearchedArgument(place.command, place.argument);
    if (!argument)
        return QString();
    if (argument->type == Type::Process)
        return manager.FindProcess(after) ? QString() : QStringLiteral("没有流程“%1”").arg(after);
    const QString problem = ProblemOfNames(place, NamesInText(argument->type, place.text), with);
    return problem.isEmpty() ? ExpressionProblem(argument->type, place.text, after) : problem;
}

// A name stays one.
QString RpaProcessSearch::ProblemOfNames(const RpaSearchPlace& place, const QVector<Name>& names,
                                         const QString& with) const
{
    for (const Name& name : names) {
        RpaSearchPlace inside = place;
        inside.text = name.first;
        inside.begins.clear();
        for (const int begin : place.begins)
            if (begin >= name.second && begin + options.text.size() <= name.second + name.first.size())
                inside.begins.append(begin - name.second);
        QString problem = inside.begins.isEmpty() ? QString() : NameProblem(Replaced(inside, with));
        if (!problem.isEmpty())
            return problem;
    }
    return QString();
}

QVector<RpaStatementChange> RpaProcessSearch::Replace(const ProcessDataManager& manager,
                                                      const QVector<RpaSearchPlace>& places,
                                                      const QString& with) const
{
    QVector<RpaStatementChange> changes;
    for (const RpaSearchPlace& place : places) {
        const RpaProcess* process = manager.FindProcess(place.processName);
        const RpaStatementNode* node = process ? process->Find(place.statementId) : nullptr;
        if (!node || !Problem(manager, place, with).isEmpty())
            continue;
        const bool isSame = !changes.isEmpty() && changes.last().processName == place.processName &&
                            changes.last().before.id == place.statementId;
        if (!isSame)
            changes.append({place.processName, node->GetValues(), node->GetValues()});
        Put(place, Replaced(place, with), changes.last().after);
    }
    const auto isNone = [](const RpaStatementChange& change) { return change.before == change.after; };
    changes.erase(std::remove_if(changes.begin(), changes.end(), isNone), changes.end());
    return changes;
}
