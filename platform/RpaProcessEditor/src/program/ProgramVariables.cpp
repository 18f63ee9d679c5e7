// SPDX-License-Identifier: Apache-2.0

#include "ProgramVariables_p.h"

#include <RpaProcessData/RpaExpression.h>

#include <QHash>
#include <QRegularExpression>
#include <QSet>

namespace
{
struct ProgramLine
{
    QStringList read;
    QStringList set;
};

// "a, b = …", "a: int = …", "a += …", "for a in …:", "with … as a:".
ProgramLine ReadLine(const QString& line)
{
    static const QRegularExpression assignment(
        QStringLiteral(
            R"(^\s*\(?\s*(\*?\w+(?:\s*,\s*\*?\w+)*)\s*,?\s*\)?(?:\s*:[^=]*)?\s*([-+*/%&|^@]*|<<|>>)=(?!=)(.*)$)"),
        QRegularExpression::UseUnicodePropertiesOption);
    static const QRegularExpression loop(QStringLiteral(R"(^\s*(?:async\s+)?for\s+(.+?)\s+in\s+(.*)$)"));
    static const QRegularExpression opened(
        QStringLiteral(R"(^\s*(?:async\s+)?with\s+(.*?)\s+as\s+(\w+)\s*:)"),
        QRegularExpression::UseUnicodePropertiesOption);
    QRegularExpressionMatch match = assignment.match(line);
    if (match.hasMatch()) {
        const QStringList targets = RpaExpression::GetVariables(match.captured(1));
        ProgramLine parts{RpaExpression::GetVariables(match.captured(3)), targets};
        if (!match.captured(2).isEmpty())
            parts.read += targets;
        return parts;
    }
    match = loop.match(line);
    if (match.hasMatch())
        return {RpaExpression::GetVariables(match.captured(2)),
                RpaExpression::GetVariables(match.captured(1))};
    match = opened.match(line);
    if (match.hasMatch())
        return {RpaExpression::GetVariables(match.captured(1)), {match.captured(2)}};
    return {RpaExpression::GetVariables(line), {}};
}

bool IsIndented(const QString& line)
{
    return line.isEmpty() || line.at(0).isSpace();
}

// A line inside a statement runs with the whole of it.
int BeginOfStatement(const QStringList& lines, int line)
{
    while (line > 1 && IsIndented(lines.at(line - 1)))
        --line;
    return line;
}

QSet<QString> ParametersOf(const QString& head)
{
    static const QRegularExpression parameter(QStringLiteral(R"([(,]\s*\*{0,2}(\w+))"),
                                              QRegularExpression::UseUnicodePropertiesOption);
    QSet<QString> names;
    QRegularExpressionMatchIterator each = parameter.globalMatch(head);
    while (each.hasNext())
        names.insert(each.next().captured(1));
    return names;
}

// What lines read and set. What a function reads counts where the function is named.
class ProgramNames
{
public:
    // chosen: one of those that run. Definitions run wherever they stand.
    void Take(const QString& line, bool chosen)
    {
        if (!IsIndented(line))
            Begin(line);
        const ProgramLine names = ReadLine(line);
        if (!function.isEmpty())
            readByFunction[function] += names.read;
        else if (chosen || inDefinition)
            AddReads(names.read);
        if (!inDefinition)
            for (const QString& name : names.set)
                (chosen ? own : skipped).insert(name);
    }

    QStringList FindNeeded() const
    {
        QStringList names = (QSet<QString>(needed).intersect(skipped)).values();
        names.sort();
        return names;
    }

private:
    // Of a statement at the top level.
    void Begin(const QString& line)
    {
        static const QRegularExpression head(QStringLiteral(R"(^(?:(?:async\s+)?def\s+(\w+)|class\b|@))"),
                                             QRegularExpression::UseUnicodePropertiesOption);
        const QRegularExpressionMatch match = head.match(line);
        inDefinition = match.hasMatch();
        function = match.captured(1);
        if (!function.isEmpty())
            parameters[function] = ParametersOf(line);
    }

    void AddReads(const QStringList& names, const QSet<QString>& except = {})
    {
        for (const QString& name : names) {
            if (own.contains(name) || needed.contains(name) || except.contains(name))
                continue;
            needed.insert(name);
            AddReads(readByFunction.value(name), parameters.value(name));
        }
    }

    QHash<QString, QStringList> readByFunction;
    QHash<QString, QSet<QString>> parameters;
    QSet<QString> own;
    QSet<QString> skipped;
    QSet<QString> needed;
    QString function;
    bool inDefinition = false;
};
} // namespace

QStringList ProgramVariables::FindNeeded(const QString& text, int first, int last)
{
    const QStringList lines = text.split(QLatin1Char('\n'));
    const int begin = BeginOfStatement(lines, qBound(1, first, lines.size()));
    const int end = last > 0 ? qMin(last, lines.size()) : lines.size();
    ProgramNames names;
    for (int number = 1; number <= end; ++number)
        names.Take(lines.at(number - 1), number >= begin);
    return names.FindNeeded();
}
